#pragma once

#include <QWidget>
#include <memory>

class Mp3EncoderEngine;
namespace Ui {
class MiscPropertiesPanel;
}

/// The encoder's switches, a box each. The encoder is told of a box when the user clicks it, and only then.
class MiscPropertiesPanel : public QWidget
{
    Q_OBJECT

public:
    explicit MiscPropertiesPanel(Mp3EncoderEngine& LameEncoderX1, QWidget* parent = nullptr);
    ~MiscPropertiesPanel() override;

private:
    const std::unique_ptr<Ui::MiscPropertiesPanel> ui;
};
