#include "rebuild/BuildBatch.h"

#include "base/MessageKeys.h"
#include "rebuild/Cp932Text.h"
#include "base/TextHelpers.h"

namespace tarvolin {

std::string BatchNameFor(const std::string& paramBareName) {
    // A double-byte character cut in half by the four bytes is dropped whole.
    return MidAnsi(paramBareName, 1, LenAnsi(paramBareName) - 4) + "Build.bat";
}

Result<std::string> BuildBatBytes(const std::string& paramName, bool pause, const std::string& programFolder) {
    // The builder's path stands in double quotes, and a batch has no way to put a quote
    // inside them: one in the folder would end the path early, and the line would run
    // another program.
    if (programFolder.find('"') != std::string::npos)
        return Error{msg::QuoteInProgramFolder, {}, "the program's folder " + programFolder + " holds a double quote"};
    Cp932Lines out;
    Status s = out.Add("@echo off");
    if (s) s = out.Add("echo SFF を作成中 ...");
    if (s) s = out.Add({"\"", programFolder, "sprmaker.exe\" < ", paramName, " > ", kBuildLogName});
    for (std::string_view line : {"cls", "echo SFF 作成処理終了.", "echo 処理経過のログは、 Createlog.txt を参照して下さい."})
        if (s) s = out.Add(line);
    if (s && pause) s = out.Add("pause");
    if (!s) return s.error();
    return out.Take();
}

}  // namespace tarvolin
