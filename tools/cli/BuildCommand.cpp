// tarvolin-cli build FILE.sff DIR: what Build SFF does, without windows. The PCX files, the
// parameter text and a batch without "pause" go into DIR, the batch runs there with its
// console output on standard output, and the new SFF must then stand in DIR and open.
#include <cstdio>
#include <filesystem>
#include <sys/stat.h>

#include "CliSession.h"
#include "Commands.h"
#include "base/Codepage.h"
#include "base/MessageKeys.h"
#include "base/TextHelpers.h"

namespace tarvolin::cli {

namespace {

// What tells a freshly written file from one left by an earlier run.
struct FileStamp {
    bool Exists = false;
    ino_t Inode = 0;
    timespec Modified{};
    off_t Size = 0;
    bool operator==(const FileStamp& o) const {
        return Exists == o.Exists && Inode == o.Inode && Modified.tv_sec == o.Modified.tv_sec &&
               Modified.tv_nsec == o.Modified.tv_nsec && Size == o.Size;
    }
};

FileStamp StampOf(const std::string& path) {
    struct stat st {};
    if (stat(path.c_str(), &st) != 0) return {};
    return FileStamp{true, st.st_ino, st.st_mtim, st.st_size};
}

// The names the new SFF may get: the open SFF's name, and for a name in Shift JIS bytes
// also its UTF-8 spelling, which the builder gives a file it makes anew.
std::vector<std::string> NewSffNames(const std::string& folder, const std::string& sffName) {
    std::vector<std::string> names{folder + sffName};
    if (auto cp932 = ToCp932Text(sffName); cp932 && FromCp932(*cp932) != sffName)
        names.push_back(folder + FromCp932(*cp932));
    return names;
}

}  // namespace

int RunBuild(const Context& ctx, const Args& args) {
    const std::string folder = AsFolder(args[1]);
    std::vector<std::pair<std::string, FileStamp>> candidates;
    {
        CliSession cli(ctx, false);  // no "pause": nobody is there to press a key
        if (!cli.Open(args[0])) return 2;
        // Unlike the folder dialog's answer, a folder named on the command line is made when
        // it is missing: scripts name a fresh output folder more often than not.
        std::error_code ec;
        std::filesystem::create_directories(folder, ec);
        if (ec) return ExitStatus(ctx, Error{msg::WriteFailed, folder, "the folder cannot be made: " + ec.message()});
        for (const std::string& name : NewSffNames(folder, cli.Work.State.SffNameCaption))
            candidates.emplace_back(name, StampOf(name));
        cli.Ui.FolderAnswer = folder;
        if (const CommandEnd end = cli.Work.BuildSff(); end != CommandEnd::Done) {
            if (end == CommandEnd::NothingToDo) std::fprintf(stderr, "%s: no sprites to build\n", Shown(args[0]).c_str());
            return 2;
        }
    }  // the SFF opened for the build is let go before the new one is read
    for (const auto& [newSff, before] : candidates) {
        const FileStamp after = StampOf(newSff);
        if (!after.Exists || after == before) continue;
        CliSession rebuilt(ctx, false);
        if (!rebuilt.Open(newSff)) return 2;
        std::printf("%s: %d sprites\n", Shown(newSff).c_str(), rebuilt.Work.Table.RowCount());
        return 0;
    }
    std::fprintf(stderr, "%s: no new SFF was made; see %sCreateLog.txt\n", Shown(candidates.front().first).c_str(),
                 Shown(folder).c_str());
    return 2;
}

}  // namespace tarvolin::cli
