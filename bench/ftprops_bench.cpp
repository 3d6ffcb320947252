// Opening the feature type properties dialog on a large feature type, as a
// host does it: through the export, on the offscreen platform. A feature
// type of 2,000 user attributes, 300 exposed format attributes and 100
// parameters; the clock runs from the call to the dialog's first paint, then
// OK is pressed and the clock runs until the export returns. Cold (the first
// open of the process, with the resource library and the form loader made)
// and warm (the mean of the next opens), with the process's peak memory.
#include "stringobjects/vyrrwstringarrayimp.h"
#include "util/listpacking.h"

#include "vyr/IVYRFeature.h"
#include "vyr/vyr_session.h"
#include "vyrguimfc/vyrguimfc.h"

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QTimer>

#include <sys/resource.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

constexpr int kUserAttributes = 2000;
constexpr int kFormatAttributes = 300;
constexpr int kParameters = 100;

std::string numbered(const char *prefix, int i)
{
    char text[32];
    std::snprintf(text, sizeof text, "%s%04d", prefix, i);
    return text;
}

std::string capabilities()
{
    vyr::StringList formatAttrs;
    for (int i = 0; i < kFormatAttributes; ++i) {
        formatAttrs.push_back(numbered("fmt_", i));
        formatAttrs.push_back("char(20)");
    }
    vyr::StringList parameters;
    for (int i = 0; i < kParameters; ++i) {
        parameters.push_back("GUI OPTIONAL TEXT " + numbered("PARM_", i) + " Parameter " + std::to_string(i));
        parameters.push_back("");
    }
    return vyr::csvJoin({"FORMAT", "BIGFORMAT", "SOURCE", "no", "HAS_DEFLINE_ATTRS", "yes",
                         "SUPPORTS_FEAT_TYPE_FANOUT", "yes", "DATA_TYPE_MAPPINGS", "\"char(width)\",vyr_char",
                         "GEOM_TYPE_MAPPINGS", "big_line,vyr_line,big_point,vyr_point", "FORMAT_ATTRS",
                         vyr::csvJoin(formatAttrs, ','), "DEFLINE_PARMS", vyr::csvJoin(parameters, ',')},
                        ',');
}

void fillFeature(IVYRFeature &feature)
{
    feature.setFeatureType("big_table");
    for (int i = 0; i < kUserAttributes; ++i) {
        const std::string name = numbered("ATTR_", i);
        feature.setAttribute(("*" + name).c_str(), "char(20)");
        feature.setOrderedAttribute(name.c_str(), "vyr_char(20)");
    }
    VYRRWStringArrayImp names;
    VYRRWStringArrayImp types;
    for (int i = 0; i < kFormatAttributes; ++i) {
        names.append(numbered("fmt_", i).c_str());
        types.append("char(20)");
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
    feature.setAttribute("*vyr_geometry{0}", "big_line");
    feature.setAttribute("vyr_geometry{0}", "vyr_line");
}

// Notes the first paint of the dialog, then presses OK.
class FirstPaintWatch final : public QObject
{
public:
    explicit FirstPaintWatch(QElapsedTimer &clock)
        : m_clock(clock)
    {}
    qint64 paintedAt = -1;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && paintedAt < 0) {
            auto *widget = qobject_cast<QWidget *>(watched);
            auto *dialog = widget ? qobject_cast<QDialog *>(widget->window()) : nullptr;
            if (dialog && dialog->isModal()) {
                paintedAt = m_clock.nsecsElapsed();
                QTimer::singleShot(0, dialog, [dialog] { dialog->accept(); });
            }
        }
        return false;
    }

private:
    QElapsedTimer &m_clock;
};

long peakKilobytes()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

} // namespace

int main(int argc, char **argv)
{
    if (!std::getenv("QT_QPA_PLATFORM"))
        ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    ::setenv("VYR_HOME", VYR_BENCH_STAGE_DIR "/", 0);
    const int runs = argc > 1 ? std::max(2, std::atoi(argv[1])) : 10;
    QApplication application(argc, argv);
    IVYRSession *session = VYR_SessionCreate();
    IVYRFeature *feature = session->createFeature();
    fillFeature(*feature);
    const std::string formatCapabilities = capabilities();
    const long baseline = peakKilobytes();

    double coldPaint = 0, coldTotal = 0, warmPaint = 0, warmTotal = 0;
    for (int run = 0; run < runs; ++run) {
        QElapsedTimer clock;
        FirstPaintWatch watch(clock);
        application.installEventFilter(&watch);
        clock.start();
        const bool ok = VYRFeatTypeProperties(session, feature, formatCapabilities.c_str(), nullptr);
        const double total = clock.nsecsElapsed() / 1e6;
        application.removeEventFilter(&watch);
        if (!ok || watch.paintedAt < 0) {
            std::fprintf(stderr, "bench_ftprops: the dialog did not open and close with OK\n");
            return 1;
        }
        const double paint = watch.paintedAt / 1e6;
        if (run == 0) {
            coldPaint = paint;
            coldTotal = total;
        } else {
            warmPaint += paint / (runs - 1);
            warmTotal += total / (runs - 1);
        }
    }
    std::printf("feature type: %d user attributes, %d format attributes, %d parameters\n", kUserAttributes,
                kFormatAttributes, kParameters);
    std::printf("cold: first paint %.1f ms, through OK %.1f ms\n", coldPaint, coldTotal);
    std::printf("warm (mean of %d): first paint %.1f ms, through OK %.1f ms\n", runs - 1, warmPaint, warmTotal);
    std::printf("peak memory: %.1f MB (%.1f MB before the first open)\n", peakKilobytes() / 1024.0,
                baseline / 1024.0);
    session->destroyFeature(feature);
    VYR_SessionDestroy(session);
    return 0;
}
