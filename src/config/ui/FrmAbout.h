#pragma once
// frmAbout: the program's icon, description and version. Its texts come from the version
// block, never from the settings file. Shown modally over every window of the program.
#include <QDialog>
#include <QLabel>
#include <QPushButton>

namespace tarvolin {

class FrmAbout : public QDialog {
    Q_OBJECT
public:
    explicit FrmAbout(QWidget* parent);

private:
    QLabel pctIcon{this};
    QLabel lblAppName{this};
    QLabel lblVer{this};
    QLabel Label2{this};
    QPushButton cmdOK{this};
};

}  // namespace tarvolin
