#include "encoding/WriteProgressPanel.h"

#include "ui_WriteProgressPanel.h"

WriteProgressPanel::WriteProgressPanel(QWidget* parent)
    : QWidget(parent)
    , ui(std::make_unique<Ui::WriteProgressPanel>())
{
    ui->setupUi(this);
    connect(ui->cmdWriteDisc, &QToolButton::clicked, this, &WriteProgressPanel::writeWanted);
    connect(ui->cmdCancel, &QToolButton::clicked, this, &WriteProgressPanel::cancelWanted);
}

WriteProgressPanel::~WriteProgressPanel() = default;

void WriteProgressPanel::setStatus(const QString& text)
{
    ui->lblStatus->setText(text);
}

void WriteProgressPanel::setTrackProgress(int percent)
{
    ui->prgTrackProgress->setValue(percent);
}

void WriteProgressPanel::setTotalProgress(int percent)
{
    ui->prgTotalProgress->setValue(percent);
}

void WriteProgressPanel::setWriteEnabled(bool enabled)
{
    ui->cmdWriteDisc->setEnabled(enabled);
}

void WriteProgressPanel::setCancelEnabled(bool enabled)
{
    ui->cmdCancel->setEnabled(enabled);
}

#include "moc_WriteProgressPanel.cpp"
