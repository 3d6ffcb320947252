#include "grid/cugmem.h"
#include "grid/sparserows.h"

#include <gtest/gtest.h>

#include <optional>
#include <random>
#include <tuple>
#include <vector>

namespace vyr {
namespace {

// Random row operations, one row or many at a time, against a plain vector
// that holds every row.
TEST(SparseRowsTest, AgreesWithAPlainListOfRows)
{
    std::mt19937 random(7);
    SparseRows<int> rows;
    std::vector<std::optional<int>> reference;
    for (int step = 0; step < 20000; ++step) {
        const long row = static_cast<long>(random() % 300);
        const int operation = static_cast<int>(random() % 6);
        // Operations 1 and 2 take one row, 3 and 4 a random number of them.
        const long count = operation <= 2 ? 1 : static_cast<long>(random() % 40);
        const bool inside = static_cast<std::size_t>(row) < reference.size();
        const auto at = reference.begin() + std::min<long>(row, long(reference.size()));
        switch (operation) {
        case 0:
            rows.findOrCreate(row) = step;
            reference.resize(std::max(reference.size(), std::size_t(row + 1)));
            reference[row] = step;
            break;
        case 1:
        case 3:
            operation == 1 ? rows.insertRow(row) : rows.insertRows(row, count);
            if (inside)
                reference.insert(at, std::size_t(count), std::nullopt);
            break;
        case 2:
        case 4:
            operation == 2 ? rows.removeRow(row) : rows.removeRows(row, count);
            reference.erase(at, at + std::min<long>(count, reference.end() - at));
            break;
        default: {
            const int *found = rows.find(row);
            ASSERT_EQ(found != nullptr, inside && reference[row].has_value()) << "step " << step << " row " << row;
            if (found) {
                ASSERT_EQ(*found, *reference[row]) << "step " << step;
            }
        }
        }
    }
    // Walks from a row, both ways, see the stored rows from there in order.
    for (const long from : {0L, 37L, 150L, 400L}) {
        std::vector<long> forward;
        std::vector<long> backward;
        rows.forEachFrom(from, [&](long row, int &) { return forward.push_back(row), true; });
        rows.forEachBackFrom(from, [&](long row, int &) { return backward.push_back(row), true; });
        std::vector<long> expectedForward;
        std::vector<long> expectedBackward;
        for (long row = 0; row < long(reference.size()); ++row) {
            if (reference[std::size_t(row)] && row >= from)
                expectedForward.push_back(row);
            if (reference[std::size_t(row)] && row <= from)
                expectedBackward.insert(expectedBackward.begin(), row);
        }
        EXPECT_EQ(forward, expectedForward) << "from " << from;
        EXPECT_EQ(backward, expectedBackward) << "back from " << from;
    }
    std::size_t stored = 0;
    rows.forEach([&](long row, int &value) {
        ASSERT_TRUE(reference[row].has_value());
        EXPECT_EQ(value, *reference[row]);
        ++stored;
    });
    EXPECT_EQ(stored, rows.storedRows());
}

CUGCell textCell(const char *text)
{
    CUGCell cell;
    cell.setText(text);
    return cell;
}

TEST(CUGMemTest, CellsExistOnlyOnceWrittenAndAWriteReplacesThem)
{
    CUGMem store;
    CUGCell cell;
    cell.setBackColor(Qt::yellow);
    EXPECT_EQ(store.GetCell(2, 50000, cell), 1);
    EXPECT_EQ(cell.backColor(), QColor(Qt::yellow)) << "left as it was";

    store.SetCell(2, 50000, textCell("a"));
    CUGCell colour;
    colour.setTextColor(Qt::red);
    store.SetCell(2, 50000, colour);
    EXPECT_EQ(store.GetCell(2, 50000, cell), 0);
    EXPECT_TRUE(cell.text().isNull()) << "the second write replaced the first";
    EXPECT_EQ(cell.textColor(), QColor(Qt::red));
    EXPECT_EQ(cell.backColor(), QColor(Qt::yellow)) << "what was in the given cell stays";
    EXPECT_EQ(store.storedRows(), 1u);

    store.SetCell(0, -1, textCell("heading"));
    store.DeleteCell(2, 50000);
    CUGCell fresh;
    EXPECT_EQ(store.GetCell(2, 50000, fresh), 1);
    EXPECT_EQ(store.GetCell(0, -1, fresh), 0);
}

TEST(CUGMemTest, RowsShiftOnInsertAndDeleteButHeadingsStay)
{
    CUGMem store;
    for (long row : {0L, 5L, 99999L})
        store.SetCell(0, row, textCell(std::to_string(row).c_str()));
    store.SetCell(0, -1, textCell("heading"));
    store.InsertRow(3);
    store.DeleteRow(0);
    EXPECT_EQ(store.InsertRow(-1), 1);
    const auto text = [&store](long row) {
        CUGCell cell;
        return store.GetCell(0, row, cell) == 0 ? cell.text().toStdString() : std::string("(none)");
    };
    EXPECT_EQ(text(0), "(none)");
    EXPECT_EQ(text(5), "5");
    EXPECT_EQ(text(99999), "99999");
    EXPECT_EQ(text(-1), "heading");
}

TEST(CUGMemTest, FindWithTheStoreFlags)
{
    CUGMem store;
    store.SetCell(1, 2, textCell("Main Road"));
    store.SetCell(1, 7, textCell("main road"));
    store.SetCell(1, 9, textCell("Road"));
    store.SetCell(0, 4, textCell("Main Road"));
    // Each case: the text, the row to search from, the flags and the row found, -99 for none.
    const std::tuple<const char *, long, int, long> cases[] = {
        {"Main Road", -1, 0, 2},
        {"Main Road", 2, 0, -99},
        {"Main Road", 2, CUGDataSource::FindIgnoreCase, 7},
        {"road", -1, CUGDataSource::FindPartial, 7},
        {"road", -1, CUGDataSource::FindPartial | CUGDataSource::FindIgnoreCase, 2},
        {"Road", 100, CUGDataSource::FindUp, 9},
        {"Main Road", 7, CUGDataSource::FindUp, 2},
    };
    for (const auto &[text, from, flags, found] : cases) {
        int column = 1;
        long row = from;
        const int result = store.FindNext(text, column, row, flags);
        EXPECT_EQ(result == 0 ? row : -99, found) << text << " from " << from << " flags " << flags;
    }
}

// Random writes, deletions, row moves and reorderings: the counts of a
// column agree with the texts a reader finds, whether the counting began
// before the changes or after them, and heading rows never count.
TEST(CUGMemTest, CountedTextsFollowEveryChange)
{
    std::mt19937 random(11);
    CUGMem early;
    CUGMem late;
    early.CountText(1, QStringLiteral("x"));
    const QString texts[] = {QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"), QString()};
    for (int step = 0; step < 4000; ++step) {
        const long row = static_cast<long>(random() % 60) - 2;
        const int column = static_cast<int>(random() % 3);
        const long count = static_cast<long>(random() % 5);
        const QString &text = texts[random() % std::size(texts)];
        const bool deleting = random() % 2 == 0;
        for (CUGMem *store : {&early, &late}) {
            switch (step % 6) {
            case 0:
            case 1:
                store->SetCell(column, row, textCell(text.toUtf8().constData()));
                break;
            case 2: {
                CUGCell colour;
                colour.setTextColor(Qt::red);
                store->SetCell(column, row, colour);
                break;
            }
            case 3:
                store->DeleteCell(column, row);
                break;
            case 4:
                deleting ? store->DeleteRows(row, count) : store->InsertRows(row, count);
                break;
            case 5: {
                std::vector<long> order{3, 0, 2, 1};
                store->PermuteTexts({0, 1}, std::max(0L, row), order);
                break;
            }
            }
        }
    }
    for (const QString &text : texts) {
        long found = 0;
        for (long row = 0; row < 200; ++row) {
            CUGCell cell;
            if (!text.isEmpty() && early.GetCell(1, row, cell) == 0 && cell.text() == text)
                ++found;
        }
        EXPECT_EQ(early.CountText(1, text), found) << text.toStdString();
        EXPECT_EQ(late.CountText(1, text), found) << text.toStdString();
    }
}

} // namespace
} // namespace vyr
