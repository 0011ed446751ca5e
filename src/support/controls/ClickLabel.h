#pragma once

#include <QLabel>

/// A caption that can be clicked. What it does is also on a button, for the keyboard.
class ClickLabel : public QLabel
{
    Q_OBJECT

public:
    explicit ClickLabel(QWidget* parent = nullptr);

signals:
    /// The left button went down and up over the label.
    void Click();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
};
