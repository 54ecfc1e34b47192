#include "config/MessageCatalog.h"

namespace tarvolin {

namespace {

const MessageEntry kMessages[] = {
    {"ERR_MSG_0", "この形式のＰＣＸファイルは、本プログラムでは対応していません！", &AppIni::MsgPcxFormat},
    {kRangeSuffixKey, "の数値を入力して下さい！", &AppIni::MsgRangeSuffix},
    {"MSG_001_001", "作業用フォルダを指定して下さい。", &AppIni::MsgChooseFolder},
    {"MSG_002_001", "キャンセルされました。", &AppIni::MsgCancelled},
    {"MSG_002_002", "処理を中止します。", &AppIni::MsgAborting},
    {"MSG_003_001", "SFF 作成に失敗しました。", &AppIni::MsgBuildFailed},
    {"MSG_003_002", "作業用フォルダに作成されたバッチファイルを、手動実行してみて下さい。", &AppIni::MsgRunBatchByHand},
    {"MSG_004_001", "終了しますか？", &AppIni::MsgConfirmExit},
    {"MSG_005_001", "SFF 情報テーブルを初期化しますか？", &AppIni::MsgConfirmInit},
    {"MSG_006_001", "全PCXが出力されました。", &AppIni::MsgPcxDone},
    {"MSG_007_001", "SFF 作成用テキストファイル、及びバッチファイルが出力されました。", &AppIni::MsgTextDone},
    {"MSG_008_001", "数値を入力して下さい。", &AppIni::MsgEnterNumber},
    {"MSG_009_001", "このSFFファイルは共有パレットモードではありません。", &AppIni::MsgNotSharedPalette},
    {"MSG_009_002", "このSFFを正しくデコードすることは出来ません。", &AppIni::MsgCannotDecode},
    {"MSG_009_003", "デコード結果から、正しくSFFを再構築出来る保証はありません。", &AppIni::MsgNoRebuildGuarantee},
    {"MSG_009_004", "処理を続行しますか？", &AppIni::MsgContinueProcess},
    {"MSG_010_001", "選択中の画像を削除しますか？", &AppIni::MsgConfirmDelete},
    {"MSG_011_001", "この操作により、表示中のSFF情報は破棄されます。", &AppIni::MsgDiscardTable},
    {"MSG_011_002", "続行しますか？", &AppIni::MsgContinue},
    // Refusals of bad input and failed writes.
    {msg::SffUnreadable, "SFFファイルを読み込めません。", nullptr},
    {msg::SffNameShort, "SFFファイル名が短すぎます。拡張子を含めて4文字以上の名前が必要です。", nullptr},
    {msg::SffTooShort, "SFFファイルが途中で終わっています。", nullptr},
    {msg::SffImageCount, "SFFファイルの画像数が正しくありません。", nullptr},
    {msg::SffOffset, "SFFファイルのサブファイル位置がファイルの外を指しています。", nullptr},
    {msg::SffPalette, "SFFファイルから共有パレットを取り出せません。", nullptr},
    {msg::SffRange, "SFFファイルの画像データ範囲が正しくありません。", nullptr},
    {msg::SffFormat, "SFFファイルではありません。", nullptr},
    {msg::SffVersion, "SFF バージョン 1 のファイルではないため、読み込めません。", nullptr},
    {msg::FileChanged, "ファイルが、開いた後に変更されました。開き直して下さい。", nullptr},
    {msg::WriteFailed, "ファイルを書き込めませんでした。", nullptr},
    {msg::NotCp932, "Shift JIS で表せない文字が含まれているため、書き込めません。", nullptr},
    {msg::PcxUnreadable, "PCXファイルを読み込めません。", nullptr},
    {msg::BatchUnreadable, "バッチファイルを読み込めません。", nullptr},
    {msg::ParamLine, "SFF 作成用テキストの内容が正しくありません。", nullptr},
    {msg::FolderBusy, "このフォルダには、別の SFF 作成処理が書き込み中です。", nullptr},
    {msg::OutputIsOpenSff, "書き込み先が、開いているSFFファイルと同じファイルです。", nullptr},
    {msg::ControlCharacter, "改行などの制御文字が含まれているため、書き込めません。", nullptr},
    {msg::RowWithoutData, "画像データのない行があるため、書き込めません。", nullptr},
    {msg::PictureClash, "出力するPCXファイル名が、行の指す画像ファイルと同じため、書き込めません。", nullptr},
    {msg::BuildRunning, "SFF 作成処理の実行中です。終了するまでお待ち下さい。", nullptr},
    {msg::QuoteInProgramFolder, "プログラムのフォルダ名に「\"」が含まれているため、バッチファイルを書き込めません。", nullptr},
    // Notices of repairs made while opening.
    {msg::SffLinkIgnored, "SFFファイルのリンク番号が、それより前の画像を指していません。画像なしとして読み込みました。", nullptr},
    {msg::SffNoData, "SFFファイルが画像数より前で終わっています。データのない画像があります。", nullptr},
};

const CaptionEntry kCaptions[] = {
    {"PATH", "ディレクトリの指定"},
    {"PATH_OK", "O K"},
    {"PATH_CANCEL", "Cancel"},
    {"PCX", "Tarvolin - Screen"},
    {"PCX_ZOOM", "Zoom"},
    {"PCX_GROUP", "Group"},
    {"PCX_ITEM", "Item"},
    {"PCX_X", "X axis"},
    {"PCX_Y", "Y axis"},
    {"PCX_MOVE", "PCX Pos"},
    {"PCX_PALLET", "Share Pallet"},
    {"PCX_CHANGEPCX", "Change PCX"},
    {"PCX_BGDEL", "Hide BackColor"},
    {"PCX_BGWHITE", "White BackColor"},
    {"MAIN", "Tarvolin"},
    {"MAIN_SFFOPEN", "&Open SFF"},
    {"MAIN_IMGCNT", "Image Count"},
    {"MAIN_BUILDSFF", "&Build SFF"},
    {"MAIN_PCX", "Save All &PCX"},
    {"MAIN_TEXT", "Make &Text"},
    {"MAIN_SCREEN", "Show &Screen"},
    {"MAIN_END", "E&xit"},
    {"MAIN_ADD", "&Add"},
    {"MAIN_COPY", "&Copy"},
    {"MAIN_DEL", "&Delete"},
    {"MAIN_INIT", "&Initialize"},
    {"MAIN_LST_1", "SortNo"},
    {"MAIN_LST_2", "GroupNo"},
    {"MAIN_LST_3", "ItemNo"},
    {"MAIN_LST_4", "PalType"},
    {"MAIN_LST_5", "SortKey"},
    {"MAIN_LST_6", "P.Pos"},
    {"MAIN_LST_7", "PCX Name"},
    {"MAIN_LST_8", "axisX"},
    {"MAIN_LST_9", "axisY"},
};

}  // namespace

std::span<const MessageEntry> MessageTable() { return kMessages; }
std::span<const CaptionEntry> CaptionTable() { return kCaptions; }

}  // namespace tarvolin
