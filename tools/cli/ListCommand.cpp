// tarvolin-cli list FILE.sff: the table that the main window would show, all ten columns.
#include <cstdio>

#include "CliSession.h"
#include "Commands.h"

namespace tarvolin::cli {

int RunList(const Context& ctx, const Args& args) {
    CliSession cli(ctx, true);
    if (!cli.Open(args[0])) return 2;
    const SpriteTable& table = cli.Work.Table;
    std::string out = "SortNo\tGroupNo\tItemNo\tPalType\tSortKey\tP.Pos\tPCX Name\taxisX\taxisY\tPcxPath\n";
    for (int place = 1; place <= table.RowCount(); ++place) {
        const SpriteRow& row = table.Row(place);
        for (int c = 0; c < kColumnCount; ++c) {
            if (c) out += '\t';
            out += row.Cells[static_cast<size_t>(c)];
        }
        out += '\n';
    }
    std::fwrite(out.data(), 1, out.size(), stdout);
    return 0;
}

}  // namespace tarvolin::cli
