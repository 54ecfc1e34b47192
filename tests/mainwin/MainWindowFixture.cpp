#include "MainWindowFixture.h"

#include <QLabel>
#include <QTableView>
#include <QTest>

#include "support/TestData.h"

namespace tarvolin::test {

MainWindowFixture::MainWindowFixture(const std::string& iniText) {
    const std::string iniPath = dir_ / "tarvolin.ini";
    if (!iniText.empty()) WriteFile(iniPath, std::vector<uint8_t>(iniText.begin(), iniText.end()));
    settings_ = LoadSettings(iniPath);
    main_ = FrmMain::Start(settings_, dialogs_.Services);
}

void MainWindowFixture::Click(const char* name) { QTest::mouseClick(&Control(name), Qt::LeftButton); }

std::string MainWindowFixture::WriteSharedSff(const std::string& name, int count) {
    std::vector<SffSprite> sprites;
    for (int i = 0; i < count; ++i)
        sprites.push_back(MakeSprite(static_cast<uint16_t>(i), 0, i == 0 ? 0 : 1, i == 0));
    const std::string path = dir_ / name;
    WriteFile(path, EncodeSff(kSharedPaletteMode, sprites));
    return path;
}

void MainWindowFixture::Open(const std::string& path) {
    dialogs_.Files.Choose(path);
    Click("cmdSffOpen");
}

QString MainWindowFixture::Shown() {
    return QStringLiteral("%1|%2|%3|%4")
        .arg(Control<QLabel>("lblSffName").text(), Control<QLabel>("lblImage").text())
        .arg(Work().Table.RowCount())
        .arg(Control<QTableView>("lstFiles").model()->rowCount());
}

}  // namespace tarvolin::test
