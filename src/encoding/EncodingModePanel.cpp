#include "encoding/EncodingModePanel.h"

#include "engines/Mp3EncoderEngine.h"
#include "ui_EncodingModePanel.h"

#include <QButtonGroup>
#include <utility>

// A screen reader and the arrow keys select an option without a click; a click on the selected one toggles nothing.
EncodingModePanel::EncodingModePanel(Mp3EncoderEngine& LameEncoderX1, QWidget* parent)
    : QWidget(parent)
    , LameEncoderX1(LameEncoderX1)
    , ui(std::make_unique<Ui::EncodingModePanel>())
{
    ui->setupUi(this);
    int index = 0;
    for (QRadioButton* option : {ui->optMode0, ui->optMode1, ui->optMode2, ui->optMode3})
        ui->optMode->setId(option, index++);
    connect(ui->optMode, &QButtonGroup::idToggled, this, [this](int option, bool selected) {
        if (selected)
            optMode_Click(option);
    });
    connect(ui->optMode, &QButtonGroup::idPressed, this,
            [this](int option) { pressedAgain = option == ui->optMode->checkedId(); });
    connect(ui->optMode, &QButtonGroup::idClicked, this, [this](int option) {
        if (std::exchange(pressedAgain, false))
            optMode_Click(option);
    });
}

EncodingModePanel::~EncodingModePanel() = default;

void EncodingModePanel::optMode_Click(int index)
{
    LameEncoderX1.Mode(static_cast<short>(index));
}

#include "moc_EncodingModePanel.cpp"
