#include "rebuild/BuildFiles.h"

#include "base/MessageKeys.h"
#include "rebuild/BuildBatch.h"
#include "rebuild/ParamText.h"
#include "base/AtomicFile.h"
#include "base/Codepage.h"
#include "base/TextHelpers.h"

namespace tarvolin {

namespace {
// A refusal of a text is about the file it was meant for.
Error Naming(Error e, const std::string& file) {
    if (e.File.empty()) e.File = file;
    return e;
}
}  // namespace

Result<BuildTexts> PrepareBuildTexts(const SpriteTable& table, const std::string& sffNameCaption,
                                     const std::string& paramPath, bool pause, const std::string& programFolder) {
    // The names are split and cut in CP932 bytes, so a path CP932 can't hold has no
    // defined batch name: it is refused like a text.
    const auto cp932Path = ToCp932Text(paramPath);
    if (!cp932Path) return Error{msg::NotCp932, paramPath, "the path holds a character that Shift JIS cannot hold"};
    BuildTexts texts;
    // The batch names the parameter text in CP932 and is read back by that code page, so
    // both files stand under the names it reads back: a name in Shift JIS bytes under its
    // UTF-8 reading, as the system spells it.
    const std::string spelled = FromCp932(*cp932Path);
    texts.ParamName = GetFileName(spelled);
    texts.Folder = GetFolder(paramPath);
    texts.BatchName = BatchNameFor(texts.ParamName);
    auto param = ParamTextBytes(table, sffNameCaption);
    if (!param) return Naming(param.error(), paramPath);
    auto batch = BuildBatBytes(texts.ParamName, pause, programFolder);
    if (!batch) return Naming(batch.error(), texts.Folder + texts.BatchName);
    texts.ParamBytes = std::move(param.value());
    texts.BatchBytes = std::move(batch.value());
    return texts;
}

Status WriteBuildTexts(const BuildTexts& texts) {
    if (auto s = WriteFileAtomically(texts.Folder + texts.ParamName, texts.ParamBytes); !s) return s;
    return WriteFileAtomically(texts.Folder + texts.BatchName, texts.BatchBytes);
}

std::vector<std::string> NewSffPaths(const std::string& folder, const std::string& sffNameCaption) {
    std::vector<std::string> paths{folder + sffNameCaption};
    if (auto cp932 = ToCp932Text(sffNameCaption); cp932 && FromCp932(*cp932) != sffNameCaption)
        paths.push_back(folder + FromCp932(*cp932));
    return paths;
}

std::string BuildParamName(const SffState& state) { return state.SffBaseName + "_SFF.txt"; }

}  // namespace tarvolin
