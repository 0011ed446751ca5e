#pragma once

#include <QWidget>
#include <memory>

namespace Ui {
class WriteProgressPanel;
}

/// How far a write is, and the commands that begin and end it.
class WriteProgressPanel : public QWidget
{
    Q_OBJECT

public:
    explicit WriteProgressPanel(QWidget* parent = nullptr);
    ~WriteProgressPanel() override;

    void setStatus(const QString& text);
    void setTrackProgress(int percent);
    void setTotalProgress(int percent);

    /// A write can be begun while there is none, and ended while there is one.
    void setWriteEnabled(bool enabled);
    void setCancelEnabled(bool enabled);

signals:
    void writeWanted();
    void cancelWanted();

private:
    const std::unique_ptr<Ui::WriteProgressPanel> ui;
};
