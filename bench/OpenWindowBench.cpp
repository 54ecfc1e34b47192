// Opening the largest real character of the samples (1,807 sprites) in the main window,
// offscreen: from the file to the filled list with the first row on the preview, as the
// user waits for it after Open SFF.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QLabel>

#include "config/Settings.h"
#include "mainwin/ui/FrmMain.h"
#include "support/ScriptedDialogs.h"

namespace tarvolin {
namespace {

const std::string kCharacter =
    std::string(TARVOLIN_SHARED_DATA) + "/corpus/PieceOfPaper_MugenProject1__chars_K_K.sff";

void BM_OpenCharacterInWindow(benchmark::State& st) {
    const Settings settings = LoadSettings(std::string());
    test::ScriptedServices dialogs;
    const auto main = FrmMain::Start(settings, dialogs.Services);
    for (auto _ : st) {
        dialogs.Box.Answer(platform::Answer::Yes);  // the palette-mode warning of this file
        main->OpenGiven(kCharacter);
        QApplication::processEvents();  // the list drawn
        if (main->Work().Table.RowCount() != 1807) {
            st.SkipWithError("../shared/data is absent or the file was not opened");
            break;
        }
    }
}

BENCHMARK(BM_OpenCharacterInWindow)->Unit(benchmark::kMillisecond)->MinTime(2.0);

}  // namespace
}  // namespace tarvolin

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("XDG_CONFIG_HOME", "/nonexistent");  // the user's state file is not read
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
