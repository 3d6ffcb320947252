#include "model/reviewcheck.h"

#include "model/runner.h"

#include "ftprops/schemareview.h"
#include "ftprops/vyrobjftpropsformatinfo.h"
#include "ftprops/vyrobjworkspaceschemainfo.h"
#include "ftpropsdlg/reviewtexts.h"
#include "stringobjects/vyrrwstringimp.h"
#include "util/stringconverter.h"

#include "vyr/IVYRFeature.h"
#include "vyr/IVYRSession.h"
#include "vyr/vyr_featurefile.h"

#include <QApplication>
#include <QPlainTextEdit>
#include <QTest>

#include <algorithm>
#include <memory>

namespace vyr::model {

std::optional<QString> readReview(DialogDriver &driver)
{
    std::optional<QString> shown;
    driver.watcher().expect([&](QWidget *window) {
        auto *list = window->objectName() == QLatin1String("reviewChangesDialog")
            ? window->findChild<QPlainTextEdit *>()
            : nullptr;
        if (!list) {
            driver.watcher().dismiss(window);
            return driver.problem(QStringLiteral("Control+Shift+R opened no review"));
        }
        shown = list->toPlainText();
        ModalWatcher::activate(window);
        QTest::keyClick(list, Qt::Key_Escape);
        if (window->isVisible()) {
            driver.problem(QStringLiteral("Escape did not leave the review"));
            if (auto *dialog = qobject_cast<QDialog *>(window))
                dialog->reject();
        }
    });
    driver.key(Qt::Key_R, Qt::ControlModifier | Qt::ShiftModifier);
    driver.settle();
    if (!driver.watcher().allAnswered()) {
        driver.watcher().forgetExpected();
        driver.problem(QStringLiteral("Control+Shift+R opened no window"));
    }
    return shown;
}

namespace {

// A feature read back from its file, freed with its session.
struct OwnedFeature
{
    OwnedFeature(IVYRSession &session, const std::string &json)
        : session(session)
        , feature(session.createFeature())
    {
        if (!VYR_FeatureReadJson(feature, json.data(), json.size(), "opened", nullptr))
            qFatal("the handed-over feature cannot be read back");
    }
    ~OwnedFeature() { session.destroyFeature(feature); }
    OwnedFeature(const OwnedFeature &) = delete;
    OwnedFeature &operator=(const OwnedFeature &) = delete;

    IVYRSession &session;
    IVYRFeature *feature;
};

} // namespace

std::string expectedReview(IVYRSession &session, const HandedOver &handedOver, IVYRFeature &saved,
                           const SchemaModel &model)
{
    OwnedFeature opened(session, handedOver.json);
    // The records the dialog is given: a workspace's tell formats apart by
    // their names and keep the role's settings; the single export's do not.
    std::vector<std::unique_ptr<VYRObjFTPropsFormatInfo>> formats;
    std::unique_ptr<VYRObjFTPropsSchemaInfo> before, after;
    if (handedOver.workspaceFormats.empty()) {
        formats.push_back(std::make_unique<VYRObjFTPropsFormatInfo>(handedOver.capabilities, &session));
        before = std::make_unique<VYRObjFTPropsSchemaInfo>(session, *opened.feature, *formats.front());
        after = std::make_unique<VYRObjFTPropsSchemaInfo>(session, saved, *formats.front());
    } else {
        formats.push_back(VYRObjFTPropsFormatInfo::namedByFormat(handedOver.capabilities, &session));
        for (const std::string &capabilities : handedOver.workspaceFormats)
            formats.push_back(VYRObjFTPropsFormatInfo::namedByFormat(capabilities, &session));
        const auto lookup = [&formats](const std::string &id) -> const FTPropsFormatInfo * {
            for (const auto &format : formats) {
                if (format->getId() == id)
                    return format.get();
            }
            return nullptr;
        };
        before = std::make_unique<VYRObjWorkspaceSchemaInfo>(session, *opened.feature, *formats.front(), lookup);
        // A feature type moved to another dataset is read in its format's
        // words from then on, as a host reads it back.
        VYRRWStringImp moved;
        const FTPropsFormatInfo *movedTo = saved.getAttribute("vyr_format", moved) ? lookup(moved.c_str()) : nullptr;
        after = std::make_unique<VYRObjWorkspaceSchemaInfo>(session, saved, movedTo ? *movedTo : *formats.front(),
                                                            lookup);
    }
    const auto formatOf = [&formats](const std::string &id) -> const FTPropsFormatInfo * {
        for (const auto &format : formats) {
            if (format->getId() == id)
                return format.get();
        }
        return formats.front().get();
    };
    SchemaReviewInput input(*before, *after, *formatOf(after->getFormatId()));
    if (before->getFormatId() != after->getFormatId())
        input.formatBefore = formatOf(before->getFormatId());
    AttributeRowIdentities rows;
    for (const auto &[loaded, now] : model.rowIdentities())
        rows[utf8ToAnsi(loaded)] = now ? std::optional(utf8ToAnsi(*now)) : std::nullopt;
    input.rows = std::move(rows);
    input.localisePrompt = [](const std::string &prompt) {
        return utf8ToAnsi(localisedText(QString::fromStdString(ansiToUtf8(prompt))).toStdString());
    };
    const ReviewTexts texts = ReviewTextsFromResources();
    input.texts = &texts;
    return ansiToUtf8(ReviewAsText(ReviewSchemaChanges(input), texts));
}

Strings reviewDifferences(const QString &shown, const std::string &expected)
{
    // Legalisations are in the words of the rule; the model knows the
    // names they give, which the renames and additions already carry.
    const QString legalised = QString::fromStdString(ansiToUtf8(ReviewTextsFromResources().legalised));
    const QString opening = QStringLiteral("  ") + legalised.section(QLatin1String("{old}"), 0, 0);
    const QString between = legalised.section(QLatin1String("{old}"), 1).section(QLatin1String("{new}"), 0, 0);
    Strings shownLines;
    for (const QString &line : shown.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        if (!(line.startsWith(opening) && line.contains(between)))
            shownLines.push_back(line.toStdString());
    }
    Strings expectedLines;
    for (const QString &line : QString::fromStdString(expected).split(QLatin1Char('\n'), Qt::SkipEmptyParts))
        expectedLines.push_back(line.toStdString());
    Strings differences;
    for (const std::string &line : shownLines) {
        if (std::find(expectedLines.begin(), expectedLines.end(), line) == expectedLines.end())
            differences.push_back("the review said \"" + line + "\", which the saved file does not hold");
    }
    for (const std::string &line : expectedLines) {
        if (std::find(shownLines.begin(), shownLines.end(), line) == shownLines.end())
            differences.push_back("the saved file holds \"" + line + "\", which the review did not say");
    }
    if (differences.empty() && shownLines != expectedLines)
        differences.push_back("the review lists the changes in another order than they are saved");
    if (!differences.empty())
        differences.push_back("the review in full:\n" + shown.toStdString());
    return differences;
}

} // namespace vyr::model
