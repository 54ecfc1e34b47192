// The table's history at the size of the largest characters: 10,000 edits on a table of
// 30,000 rows, then all of them taken back. Time for the edits and for the undos, and the
// memory the history holds after the edits (heap in use, against before them).
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <chrono>

#include "base/TextHelpers.h"
#include "config/AppIni.h"
#include "mainwin/Session.h"

namespace tarvolin {
namespace {

// The commands' user interface, doing nothing: only the history is measured.
class NoUi : public SessionUi {
public:
    bool Ask(const std::string&, int) override { return true; }
    void Tell(const std::string&, int) override {}
    std::optional<std::string> ChooseFile(const FileDialogSetup&) override { return std::nullopt; }
    std::optional<std::string> ChooseWorkFolder(const std::string&) override { return std::nullopt; }
    void SetBusy(bool) override {}
    void PumpEvents() override {}
    bool RunBatch(const std::string&, const std::string&) override { return false; }
    void ShowLabels(const std::string&, const std::string&) override {}
    void ShowSffRow(const SpriteRow&, const SffState&, int64_t, const std::string&) override {}
    void ShowFileRow(const SpriteRow&, const std::string&) override {}
    void ShowPictureFile(const std::string&) override {}
    void ResetPreview() override {}
};

constexpr int kRows = 30000;
constexpr int kEdits = 10000;

std::vector<SpriteRow> Rows() {
    std::vector<SpriteRow> rows(kRows);
    for (int i = 0; i < kRows; ++i) {
        SpriteRow& r = rows[size_t(i)];
        r[Column::GroupNo] = DecimalText(i / 100);
        r[Column::ItemNo] = DecimalText(i % 100);
        r[Column::PPos] = DecimalText(i);
        r[Column::PcxName] = "character_" + DecimalText(i) + ".pcx";
        r[Column::AxisX] = "0";
        r[Column::AxisY] = "0";
    }
    return rows;
}

size_t HeapInUse() { return mallinfo2().uordblks; }

void BM_EditThenUndoAll(benchmark::State& st) {
    const AppIni ini = DefaultAppIni();
    NoUi ui;
    double editSeconds = 0, undoSeconds = 0, historyBytes = 0;
    for (auto _ : st) {
        st.PauseTiming();
        Session session(ini, ui, SessionSetup{});
        session.Table.Assign(Rows());
        const size_t before = HeapInUse();
        st.ResumeTiming();
        auto start = std::chrono::steady_clock::now();
        // Edits all over the table, of every kind of cell an edit changes.
        for (int k = 0; k < kEdits; ++k) {
            const int place = (k * 7919) % kRows + 1;
            const Column column = k % 3 == 0 ? Column::GroupNo : k % 3 == 1 ? Column::AxisX : Column::ItemNo;
            session.Table.Select(place);
            session.SelectList();
            session.EditCell(place, column, DecimalText(1000 + k));
        }
        const auto edited = std::chrono::steady_clock::now();
        historyBytes += double(HeapInUse() - before);
        while (session.Undo() == CommandEnd::Done) {
        }
        const auto undone = std::chrono::steady_clock::now();
        editSeconds += std::chrono::duration<double>(edited - start).count();
        undoSeconds += std::chrono::duration<double>(undone - edited).count();
        if (session.HasUnsavedEdits()) st.SkipWithError("not all undone");
    }
    const double n = double(st.iterations());
    st.counters["edits_ms"] = editSeconds * 1000 / n;
    st.counters["undo_all_ms"] = undoSeconds * 1000 / n;
    st.counters["history_MiB"] = historyBytes / n / (1024 * 1024);
}

BENCHMARK(BM_EditThenUndoAll)->Unit(benchmark::kMillisecond)->MinTime(2.0);

}  // namespace
}  // namespace tarvolin

BENCHMARK_MAIN();
