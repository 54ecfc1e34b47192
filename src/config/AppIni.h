#pragma once
// AppIni: the settings read once at start-up, constant afterwards, passed as const AppIni&.
// Captions are not kept here: only the start-up step that applies them needs them.
#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace tarvolin {

struct AppIni {
    std::string IniPath;
    std::string FontName;
    int32_t FontSize = 8;
    int32_t FontCharset = 128;

    std::string MsgPcxFormat;
    std::string MsgRangeSuffix;
    std::string MsgChooseFolder;
    std::string MsgCancelled;
    std::string MsgAborting;
    std::string MsgBuildFailed;
    std::string MsgRunBatchByHand;
    std::string MsgConfirmExit;
    std::string MsgConfirmInit;
    std::string MsgPcxDone;
    std::string MsgTextDone;
    std::string MsgEnterNumber;
    std::string MsgNotSharedPalette;
    std::string MsgCannotDecode;
    std::string MsgNoRebuildGuarantee;
    std::string MsgContinueProcess;
    std::string MsgConfirmDelete;
    std::string MsgDiscardTable;
    std::string MsgContinue;
    // Unsaved edits, the build's result and Find, in section MESSAGE too.
    std::string MsgUnsavedEdits;
    std::string MsgBuildFirst;
    std::string MsgBuildDone;
    std::string MsgBuildNone;
    std::string MsgNotFound;
    std::string MsgExportDone;

    // Refusals of bad input and failed writes, which have no field of their own above:
    // section MESSAGE key -> text (defaults filled in by LoadSettings).
    std::map<std::string, std::string, std::less<>> ErrorMessages;

    // The text of any key of section MESSAGE, the refusal keys included; the key itself
    // when the program knows no such key.
    std::string Message(std::string_view key) const;
};

// An AppIni with every default, as with no settings file.
AppIni DefaultAppIni();

}  // namespace tarvolin
