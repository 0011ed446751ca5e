#include "support/frmAbout.h"

#include "support/Pictures.h"
#include "support/dialogs/MsgBox.h"
#include "ui_frmAbout.h"

#include <QApplication>

frmAbout::frmAbout(MsgBox& msgBox, QWidget* parent)
    : QDialog(parent)
    , msgBox(msgBox)
    , ui(std::make_unique<Ui::frmAbout>())
{
    ui->setupUi(this);
    const QString title = QApplication::applicationDisplayName();
    setWindowIcon(programIcon());
    setWindowTitle(tr("About %1").arg(title));
    ui->lblTitle->setText(title);
    ui->lblVersion->setText(tr("Version %1").arg(QStringLiteral(LARKSPIN_VERSION)));
    QFont large = ui->lblTitle->font();
    large.setPointSizeF(QFontInfo(large).pointSizeF() * 1.8);
    large.setBold(true);
    ui->lblTitle->setFont(large);
    connect(ui->cmdOK, &QPushButton::clicked, this, &frmAbout::close);
    connect(ui->cmdSysInfo, &QPushButton::clicked, this, &frmAbout::StartSysInfo);
    ui->cmdOK->setFocus();
}

frmAbout::~frmAbout() = default;

void frmAbout::StartSysInfo()
{
    msgBox.show(tr("System Information Is Unavailable At This Time"), MsgBox::Look::Plain);
}

#include "moc_frmAbout.cpp"
