#pragma once

#include <QLabel>

/// A text that is read from afar: it grows with the room it is given, and is never smaller than its font.
class ReadOut : public QLabel
{
    Q_OBJECT

public:
    explicit ReadOut(QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};
