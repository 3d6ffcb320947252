// The attribute pages of the feature type properties dialog on a large
// schema, opened as a host opens them: through the export, on the offscreen
// platform. The feature type has 10,000 user attributes spread over every
// type template of the PostgreSQL example format and two templates whose
// argument is a domain (a range, coded values); the format has 300 format
// attributes (50 of them lists, half of all exposed) and 100 parameters.
//
// Figures: the time from the call to the dialog's first paint, from there to
// the User Attributes grid's first paint when its tab is chosen, OK without
// an edit (from the press until the export returns), every name committed
// in the grid as typed (each legalised against all the others) and OK
// after that, and what the opens up to 10,000 attributes add to the
// process's peak memory, without and then with the renames. The same figures for 1,000 and (opens only) for
// 100,000 attributes show how they grow: a page costs what its visible rows
// cost, so ten times the rows must not double the time to the first paint.
// The peer, timed in the same process, is a plain QDialog with a QTableView
// over a QStandardItemModel of as many rows and five columns, from its
// construction to its first paint.
//
// The grid is reached inside the running export through the active modal
// widget; only virtual functions and inline accessors are called on it,
// since the library's copy of the dialog code is not the benchmark's.
#include "stringobjects/vyrrwstringarrayimp.h"
#include "ftpropsdlg/cattrgrid.h"
#include "ftpropsdlg/cfeattypepropsattrs.h"
#include "ftpropsdlg/cfeattypepropsdlg.h"
#include "util/capabilityfile.h"
#include "util/listpacking.h"

#include "paintwatch.h"

#include "vyr/IVYRFeature.h"
#include "vyr/vyr_session.h"
#include "vyrguimfc/vyrguimfc.h"

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QStandardItemModel>
#include <QTabBar>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>

#include <sys/resource.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

using vyr::bench::FirstPaintWatch;
using vyr::bench::PaintWait;

namespace {

constexpr int kSmallSchema = 1000;
constexpr int kLargeSchema = 10000;
constexpr int kHugeSchema = 100000;
constexpr int kFormatAttributes = 300;
constexpr int kListFormatAttributes = 50;
constexpr int kParameters = 100;
constexpr int kPeerColumns = 5;

// Every type template of the format, as the format writes it and as the
// engine stores it.
struct TypePair
{
    const char *native;
    const char *generic;
};
constexpr TypePair kTypes[] = {
    {"varchar(40)", "vyr_varchar(40)"},
    {"char(8)", "vyr_char(8)"},
    {"text", "vyr_buffer"},
    {"numeric(12,2)", "vyr_decimal(12,2)"},
    {"smallint", "vyr_int16"},
    {"int", "vyr_int32"},
    {"bigint", "vyr_int64"},
    {"real", "vyr_real32"},
    {"double precision", "vyr_real64"},
    {"boolean", "vyr_boolean"},
    {"date", "vyr_date"},
    {"timestamp", "vyr_datetime"},
    {"integer_in_range(Storeys)", "vyr_int32"},
    {"text_coded(LandUseClass)", "vyr_varchar(255)"},
};
// The templates of the two domain types and their generic types, added to
// the format's mappings.
const char *const kDomainMappings[] = {"integer_in_range(range_domain)", "vyr_int32", "text_coded(coded_domain)",
                                       "vyr_varchar(255)"};

std::string numbered(const char *prefix, int i, const char *suffix = "")
{
    char text[48];
    std::snprintf(text, sizeof text, "%s%05d%s", prefix, i, suffix);
    return text;
}

std::string formatAttributeName(int i)
{
    // Every sixth is a list, so that lists and plain names interleave when
    // the grid sorts them.
    return i % 6 == 0 && i / 6 < kListFormatAttributes ? numbered("pg_list_", i, "{}.value")
                                                        : numbered("pg_attr_", i);
}

// The example format's capabilities with our format attributes and
// parameters in place of its own.
std::string capabilities()
{
    const std::string path = VYR_BENCH_EXAMPLES_DIR "/formats/postgres.fmt";
    std::ifstream file(path);
    if (!file) {
        std::fprintf(stderr, "bench_attrpages: cannot read %s\n", path.c_str());
        std::exit(1);
    }
    std::ostringstream kept;
    for (std::string line; std::getline(file, line);) {
        if (!line.starts_with("FORMAT_ATTRS,") && !line.starts_with("DEFLINE_PARMS,"))
            kept << line << '\n';
    }
    vyr::StringList formatAttrs;
    for (int i = 0; i < kFormatAttributes; ++i) {
        formatAttrs.push_back(formatAttributeName(i));
        formatAttrs.push_back(i % 2 ? "int" : "varchar(30)");
    }
    vyr::StringList parameters;
    for (int i = 0; i < kParameters; ++i) {
        parameters.push_back("GUI OPTIONAL TEXT " + numbered("PARM_", i) + " Parameter " + std::to_string(i));
        parameters.push_back("");
    }
    const std::string extra =
        vyr::csvJoin({"FORMAT_ATTRS", vyr::csvJoin(formatAttrs, ','), "DEFLINE_PARMS", vyr::csvJoin(parameters, ',')},
                     ',');
    vyr::StringList pairs = vyr::csvSplit(vyr::capabilityStringOf(kept.str()), ',');
    for (std::size_t i = 0; i + 1 < pairs.size(); i += 2) {
        if (pairs[i] == "DATA_TYPE_MAPPINGS") {
            vyr::StringList mappings = vyr::csvSplit(pairs[i + 1], ',');
            mappings.insert(mappings.end(), std::begin(kDomainMappings), std::end(kDomainMappings));
            pairs[i + 1] = vyr::csvJoin(mappings, ',');
        }
    }
    return vyr::csvJoin(pairs, ',') + "," + extra;
}

void fillFeature(IVYRFeature &feature, int userAttributes)
{
    feature.setFeatureType("cadastre.big_table");
    for (int i = 0; i < userAttributes; ++i) {
        const std::string name = numbered("attr_", i);
        const TypePair &type = kTypes[i % std::size(kTypes)];
        feature.setAttribute(("*" + name).c_str(), type.native);
        feature.setOrderedAttribute(name.c_str(), type.generic);
    }
    // Half of the format attributes exposed; an exposed list with two
    // elements.
    VYRRWStringArrayImp names;
    VYRRWStringArrayImp types;
    for (int i = 0; i < kFormatAttributes; i += 2) {
        const std::string name = formatAttributeName(i);
        const char *type = "varchar(30)";
        names.append(name.c_str());
        types.append(type);
        if (const auto braces = name.find("{}"); braces != std::string::npos) {
            for (const char *index : {"0", "1"}) {
                std::string element = name;
                element.replace(braces, 2, std::string("{") + index + "}");
                names.append(element.c_str());
                types.append(type);
            }
        }
    }
    feature.setListAttribute("*vyr_format_attr_name", names);
    feature.setListAttribute("*vyr_format_attr_type", types);
    VYRRWStringArrayImp parameterNames;
    VYRRWStringArrayImp parameterValues;
    for (int i = 0; i < kParameters; ++i) {
        parameterNames.append(numbered("PARM_", i).c_str());
        parameterValues.append("value");
    }
    feature.setListAttribute("*vyr_parameter_name", parameterNames);
    feature.setListAttribute("*vyr_parameter_value", parameterValues);
    feature.setAttribute("*vyr_geometry{0}", "polygon");
    feature.setAttribute("vyr_geometry{0}", "vyr_area");
}

double msSince(const QElapsedTimer &clock, qint64 start)
{
    return (clock.nsecsElapsed() - start) / 1e6;
}

// A figure of /proc/self/status in kilobytes: "VmRSS:" what the process
// holds now, "RssFile:" what of it is files mapped in (libraries' code,
// fonts, resource files) as opposed to memory it allocated.
long statusKilobytes(std::string_view field)
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(field))
            return std::atol(line.c_str() + field.size());
    }
    return 0;
}

long peakKilobytes()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

// One open of the dialog through the export.
struct OpenFigures
{
    bool ok = false;
    double firstPaint = 0;   // call -> first paint of the dialog
    double tabPaint = 0;     // User Attributes tab chosen -> its grid painted
    double okPress = 0;      // OK pressed -> export returned
    double renameTotal = 0;  // every name committed
    double commitMean = 0;   // one name committed, mean
    double commitP99 = 0;    // one name committed, 99th percentile
    double commitMax = 0;    // one name committed, the slowest
    long commits = 0;
};

// Opens the dialog on `feature`; with `rename` every user attribute gets a
// new name, committed as typed, before OK.
OpenFigures openThroughExport(IVYRSession *session, IVYRFeature *feature, const std::string &formatCapabilities,
                              int userAttributes, bool rename)
{
    OpenFigures figures;
    QElapsedTimer clock;
    qint64 okPressedAt = -1;
    bool reached = false;
    FirstPaintWatch watch(clock, [&](QDialog *dialog) {
        auto *frame = std::strcmp(dialog->metaObject()->className(), "vyr::CFeatTypePropsDlg") == 0
                          ? static_cast<vyr::CFeatTypePropsDlg *>(dialog)
                          : nullptr;
        vyr::CFeatTypePropsAttrs *page = frame ? frame->attributesPage() : nullptr;
        vyr::CAttrGrid *grid = page ? page->grid() : nullptr;
        QTabBar *tabs = frame ? frame->tabControl() : nullptr;
        if (grid && tabs && tabs->count() > 1) {
            reached = true;
            figures.tabPaint = PaintWait::after(grid, [tabs] { tabs->setCurrentIndex(1); });
            if (rename) {
                std::vector<double> commits;
                commits.reserve(userAttributes);
                QElapsedTimer commitClock;
                commitClock.start();
                for (long row = 0; row < userAttributes; ++row) {
                    const QString name = QString::fromStdString(numbered("renamed_", int(row)));
                    const qint64 start = commitClock.nsecsElapsed();
                    grid->StoreUserText(vyr::CAttrGrid::kNameColumn, row, name, vyr::ug::TextEdited);
                    commits.push_back(msSince(commitClock, start));
                }
                figures.renameTotal = commitClock.nsecsElapsed() / 1e6;
                figures.commits = long(commits.size());
                figures.commitMean = figures.renameTotal / std::max(1L, figures.commits);
                std::sort(commits.begin(), commits.end());
                if (!commits.empty()) {
                    figures.commitP99 = commits[commits.size() * 99 / 100];
                    figures.commitMax = commits.back();
                }
            }
        }
        okPressedAt = clock.nsecsElapsed();
        dialog->accept();
    });
    qApp->installEventFilter(&watch);
    clock.start();
    const bool accepted = VYRFeatTypeProperties(session, feature, formatCapabilities.c_str(), nullptr);
    const qint64 returnedAt = clock.nsecsElapsed();
    qApp->removeEventFilter(&watch);
    figures.ok = accepted && reached && watch.paintedAt >= 0 && figures.tabPaint >= 0;
    figures.firstPaint = watch.paintedAt / 1e6;
    figures.okPress = (returnedAt - okPressedAt) / 1e6;
    return figures;
}

// The renamed names are what OK wrote.
bool renamedInFeature(IVYRFeature &feature, int userAttributes)
{
    VYRRWStringArrayImp names;
    feature.getOrderedAttributeNames(names);
    int renamed = 0;
    for (unsigned i = 0; i < names.entries(); ++i)
        renamed += std::strncmp(names.elementAt(i), "renamed_", 8) == 0;
    return renamed == userAttributes;
}

// The peer: as many rows in a plain table view, from construction to first
// paint.
double peerFirstPaint(int rows)
{
    QElapsedTimer clock;
    double painted = -1;
    clock.start();
    QDialog dialog;
    dialog.setModal(true);
    auto *layout = new QVBoxLayout(&dialog);
    auto *view = new QTableView(&dialog);
    auto *model = new QStandardItemModel(rows, kPeerColumns, view);
    for (int row = 0; row < rows; ++row) {
        const TypePair &type = kTypes[row % std::size(kTypes)];
        model->setItem(row, 0, new QStandardItem(QString::fromStdString(numbered("attr_", row))));
        model->setItem(row, 1, new QStandardItem(QString::fromLatin1(type.native)));
        model->setItem(row, 2, new QStandardItem(QStringLiteral("40")));
        model->setItem(row, 3, new QStandardItem(QString()));
        model->setItem(row, 4, new QStandardItem(QStringLiteral("none")));
    }
    view->setModel(model);
    layout->addWidget(view);
    dialog.resize(640, 480);
    FirstPaintWatch watch(clock, [&](QDialog *shown) {
        painted = clock.nsecsElapsed() / 1e6;
        shown->accept();
    });
    qApp->installEventFilter(&watch);
    dialog.exec();
    qApp->removeEventFilter(&watch);
    return painted;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? 0 : values[values.size() / 2];
}

struct SizeFigures
{
    double firstPaint = 0;
    double tabPaint = 0;
    double okPress = 0;
    OpenFigures renamed;
    double peerPaint = 0;
};

// The medians of `runs` opens without edits.
bool measureOpens(IVYRSession *session, IVYRFeature *feature, const std::string &formatCapabilities,
                  int userAttributes, int runs, SizeFigures &out)
{
    std::vector<double> paints, tabs, oks;
    for (int run = 0; run < runs; ++run) {
        const OpenFigures figures = openThroughExport(session, feature, formatCapabilities, userAttributes, false);
        if (!figures.ok) {
            std::fprintf(stderr, "bench_attrpages: the dialog did not open, show its grid and close with OK\n");
            return false;
        }
        paints.push_back(figures.firstPaint);
        tabs.push_back(figures.tabPaint);
        oks.push_back(figures.okPress);
    }
    out.firstPaint = median(paints);
    out.tabPaint = median(tabs);
    out.okPress = median(oks);
    return true;
}

// The peer's first paint, the median of `runs`. Its model holds every row,
// so it is timed after our memory is read, not inside the figure.
void measurePeer(int rows, int runs, SizeFigures &out)
{
    std::vector<double> peers;
    for (int run = 0; run < runs; ++run)
        peers.push_back(peerFirstPaint(rows));
    out.peerPaint = median(peers);
}

// One open that renames every attribute, on a feature not opened before.
bool measureRenames(IVYRSession *session, IVYRFeature *feature, const std::string &formatCapabilities,
                    int userAttributes, SizeFigures &out)
{
    out.renamed = openThroughExport(session, feature, formatCapabilities, userAttributes, true);
    const bool renamed = out.renamed.ok && renamedInFeature(*feature, userAttributes);
    if (!renamed)
        std::fprintf(stderr, "bench_attrpages: the renamed attributes were not written back\n");
    return renamed;
}

const char *verdict(double value, double target)
{
    return value <= target ? "met" : "MISSED";
}

double growth(double from, double to)
{
    return from > 0 ? to / from : 0.0;
}

} // namespace

int main(int argc, char **argv)
{
    if (!std::getenv("QT_QPA_PLATFORM"))
        ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    ::setenv("VYR_HOME", VYR_BENCH_STAGE_DIR "/", 0);
    // bench_attrpages [runs [user attributes]]
    const int runs = argc > 1 ? std::max(1, std::atoi(argv[1])) : 5;
    QApplication application(argc, argv);
    IVYRSession *session = VYR_SessionCreate();
    const std::string formatCapabilities = capabilities();
    // The features are the host's, made before it opens the dialog on
    // them: what they hold is not what the opens add.
    const auto madeFeature = [session](int userAttributes) {
        IVYRFeature *feature = session->createFeature();
        fillFeature(*feature, userAttributes);
        return feature;
    };
    // What the process holds, not its peak so far: a peak left by work
    // already done would hide what the opens add below it.
    const long beforeFeatures = statusKilobytes("VmRSS:");
    IVYRFeature *const features[] = {madeFeature(kSmallSchema), madeFeature(kLargeSchema), madeFeature(kSmallSchema),
                                     madeFeature(kLargeSchema)};
    const long baseline = statusKilobytes("VmRSS:");
    const long filesBefore = statusKilobytes("RssFile:");

    // The first open of the process makes the resource library and the
    // form loader; that is not what the figures are about.
    {
        IVYRFeature *warmUp = session->createFeature();
        fillFeature(*warmUp, 10);
        openThroughExport(session, warmUp, formatCapabilities, 10, false);
        peerFirstPaint(10);
        session->destroyFeature(warmUp);
    }
    const long filesMapped = statusKilobytes("RssFile:") - filesBefore;

    // With a size after the runs, only that size is opened, without its
    // peer: what a profiler is pointed at.
    if (argc > 2) {
        const int userAttributes = std::max(1, std::atoi(argv[2]));
        IVYRFeature *feature = session->createFeature();
        fillFeature(*feature, userAttributes);
        std::vector<double> paints, tabs;
        for (int run = 0; run < runs; ++run) {
            const OpenFigures figures = openThroughExport(session, feature, formatCapabilities, userAttributes, false);
            paints.push_back(figures.firstPaint);
            tabs.push_back(figures.tabPaint);
        }
        std::printf("%d user attributes: first paint %.3f ms, User Attributes tab to its grid's paint %.3f ms "
                    "(medians of %d)\n",
                    userAttributes, median(paints), median(tabs), runs);
        session->destroyFeature(feature);
        VYR_SessionDestroy(session);
        return 0;
    }

    SizeFigures small, large, huge;
    if (!measureOpens(session, features[0], formatCapabilities, kSmallSchema, runs, small) ||
        !measureOpens(session, features[1], formatCapabilities, kLargeSchema, runs, large))
        return 1;
    const double openedMb = peakKilobytes() / 1024.0;
    // Renaming every attribute makes every row the page would otherwise
    // leave as its record: the memory that costs is a figure of its own.
    if (!measureRenames(session, features[2], formatCapabilities, kSmallSchema, small) ||
        !measureRenames(session, features[3], formatCapabilities, kLargeSchema, large))
        return 1;
    for (IVYRFeature *feature : features)
        session->destroyFeature(feature);
    const double renamedMb = peakKilobytes() / 1024.0;
    measurePeer(kSmallSchema, runs, small);
    measurePeer(kLargeSchema, runs, large);
    // The largest schema is opened a few times only, and not renamed: its
    // figures are about growth, and they come after the memory is read.
    IVYRFeature *hugeFeature = madeFeature(kHugeSchema);
    const bool hugeOpened = measureOpens(session, hugeFeature, formatCapabilities, kHugeSchema, std::min(runs, 3), huge);
    session->destroyFeature(hugeFeature);
    if (!hugeOpened)
        return 1;
    measurePeer(kHugeSchema, std::min(runs, 3), huge);

    std::printf("feature type: up to %d user attributes over %zu type templates, %d format attributes (%d lists, "
                "half exposed), %d parameters\n",
                kHugeSchema, std::size(kTypes), kFormatAttributes, kListFormatAttributes, kParameters);
    std::printf("medians of %d opens through VYRFeatTypeProperties (%d at 100,000); renames in one further open each,\nafter the opens' memory is read\n\n",
                runs, std::min(runs, 3));
    std::printf("%-44s %9s %9s %9s %7s %7s %9s  %s\n", "figure", "1,000", "10,000", "100,000", "x10", "x100",
                "target", "at 10,000");
    // Growth is from 1,000 to 10,000, then from 10,000 to 100,000 (blank
    // where the largest schema has no figure).
    const auto cell = [](double value) {
        return value > 0 ? QByteArray::number(value, 'f', 3) : QByteArray();
    };
    const auto times = [](double from, double to) {
        return from > 0 && to > 0 ? QByteArray::number(to / from, 'f', 1) + 'x' : QByteArray();
    };
    const auto row = [&](const char *name, double smallValue, double largeValue, double hugeValue, double target) {
        std::printf("%-44s %9.3f %9.3f %9s %7s %7s", name, smallValue, largeValue, cell(hugeValue).constData(),
                    times(smallValue, largeValue).constData(), times(largeValue, hugeValue).constData());
        if (target > 0)
            std::printf(" %6.0f ms  %s", target, verdict(largeValue, target));
        std::printf("\n");
    };
    row("first paint of the dialog (ms)", small.firstPaint, large.firstPaint, huge.firstPaint, 150);
    row("User Attributes tab to its grid's paint (ms)", small.tabPaint, large.tabPaint, huge.tabPaint, 0);
    row("OK without edits (ms)", small.okPress, large.okPress, huge.okPress, 150);
    row("OK after renaming every attribute (ms)", small.renamed.okPress, large.renamed.okPress, 0, 300);
    row("one typed name committed, mean (ms)", small.renamed.commitMean, large.renamed.commitMean, 0, 16);
    row("one typed name committed, 99th pct. (ms)", small.renamed.commitP99, large.renamed.commitP99, 0, 16);
    // The slowest single commit mostly measures what else the machine does.
    row("one typed name committed, slowest (ms)", small.renamed.commitMax, large.renamed.commitMax, 0, 0);
    row("every name committed, in all (ms)", small.renamed.renameTotal, large.renamed.renameTotal, 0, 0);
    const double baselineMb = baseline / 1024.0;
    std::printf("%-44s %9s %9.1f\n", "peak memory after the opens (MB)", "", openedMb);
    std::printf("%-44s %9s %9.1f\n", "  of which before the first open (MB)", "", baselineMb);
    std::printf("%-44s %9s %9.1f\n", "    the host's features among it (MB)", "", (baseline - beforeFeatures) / 1024.0);
    std::printf("%-44s %9s %9.1f %25.0f MB  %s\n", "  so the opens up to 10,000 add (MB)", "", openedMb - baselineMb,
                20.0, verdict(openedMb - baselineMb, 20));
    // The first open of the process maps in what any dialog needs, whatever
    // its rows: that part of the figure is not the rows'.
    std::printf("%-44s %9s %9.1f\n", "    of which libraries, fonts, resources (MB)", "", filesMapped / 1024.0);
    std::printf("%-44s %9s %9.1f\n", "  with every row renamed, they add (MB)", "", renamedMb - baselineMb);
    std::printf("%-44s %29.3f %23.0f ms  %s\n", "first paint at 100,000 (ms)", huge.firstPaint, 150.0,
                verdict(huge.firstPaint, 150));
    const double worstGrowth
        = std::max(growth(small.firstPaint, large.firstPaint), growth(large.firstPaint, huge.firstPaint));
    std::printf("%-44s %37s %7s %6.1f x   %s\n", "first paint growth per 10x (worst)",
                times(small.firstPaint, large.firstPaint).constData(), times(large.firstPaint, huge.firstPaint).constData(),
                2.0, verdict(worstGrowth, 2.0));
    std::printf("\npeer (QDialog, QTableView, QStandardItemModel, %d columns): first paint %.2f ms at 1,000, "
                "%.2f ms at 10,000, %.2f ms at 100,000\n",
                kPeerColumns, small.peerPaint, large.peerPaint, huge.peerPaint);
    std::printf("ratio = peer time / ours, first paint: %.2f at 1,000, %.2f at 10,000, %.2f at 100,000 (aim: 1 or "
                "better)\n",
                small.peerPaint / small.firstPaint, large.peerPaint / large.firstPaint,
                huge.peerPaint / huge.firstPaint);
    // Ours opens on the General page: with the grid's own first paint added,
    // the two show the same table.
    std::printf("ratio with the User Attributes grid painted too: %.2f at 1,000, %.2f at 10,000, %.2f at 100,000\n",
                small.peerPaint / (small.firstPaint + small.tabPaint),
                large.peerPaint / (large.firstPaint + large.tabPaint),
                huge.peerPaint / (huge.firstPaint + huge.tabPaint));
    VYR_SessionDestroy(session);
    return 0;
}
