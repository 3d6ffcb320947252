// What opening a dialog costs before the user sees it: the resource
// library's string lookups (cached, and formatted with inserts) and building
// a dialog from its Designer template, against a dialog of the same
// controls, texts and icon built in code, which is the least any template
// loader can cost.
#include "ratioreporter.h"

#include "uikit/application.h"
#include "uikit/caboutdlg.h"
#include "uikit/resourcelibrary.h"

#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <cstdlib>

namespace {

void cachedStringLookup(benchmark::State &state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(vyr::loadResourceString(vyr::res::AboutLanguage));
}

void formattedString(benchmark::State &state)
{
    const QStringList inserts{QStringLiteral("/opt/vyr/")};
    for (auto _ : state)
        benchmark::DoNotOptimize(vyr::formatResourceString(vyr::res::AboutInstallDirectory, inserts));
}

void dialogFromTemplate(benchmark::State &state)
{
    for (auto _ : state) {
        vyr::CAboutDlg dialog;
        if (!dialog.Create()) {
            state.SkipWithError("template 130 not found: is VYR_HOME the installation?");
            break;
        }
        benchmark::DoNotOptimize(dialog.GetDlgItem(1001));
    }
}

void dialogInCode(benchmark::State &state)
{
    for (auto _ : state) {
        QDialog dialog;
        auto *layout = new QVBoxLayout(&dialog);
        layout->addWidget(new QLabel(QStringLiteral("<b>vyrguimfc</b> — the dialogs of the vyr system"), &dialog));
        for (int i = 0; i < 4; ++i)
            layout->addWidget(new QLabel(vyr::formatResourceString(vyr::res::AboutBuild, {"6233"}), &dialog));
        auto *row = new QHBoxLayout;
        row->addWidget(new QPushButton(QStringLiteral("Help"), &dialog));
        row->addStretch();
        row->addWidget(new QPushButton(QStringLiteral("OK"), &dialog));
        layout->addLayout(row);
        dialog.setWindowTitle(QStringLiteral("About"));
        dialog.setWindowIcon(QIcon(vyr::resourceImagePath(vyr::ResourceKind::Icon, vyr::res::ApplicationIcon)));
        benchmark::DoNotOptimize(dialog.sizeHint());
    }
}

} // namespace

BENCHMARK(cachedStringLookup);
BENCHMARK(formattedString);
BENCHMARK(dialogFromTemplate)->Unit(benchmark::kMicrosecond);
BENCHMARK(dialogInCode)->Unit(benchmark::kMicrosecond);

int main(int argc, char **argv)
{
    if (!std::getenv("QT_QPA_PLATFORM"))
        ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    // The build's installation, unless another one is named.
    ::setenv("VYR_HOME", VYR_BENCH_STAGE_DIR "/", 0);
    vyr::ensureApplication();
    return vyr::bench::runBenchmarks(argc, argv, {{"dialogFromTemplate", "dialogInCode"}});
}
