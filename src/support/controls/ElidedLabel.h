#pragma once

#include <QLabel>

/// One line of text that gives way: what is too long for its room loses its middle, and the pointer over it shows
/// it whole. The label never makes its window wider. text() is the whole text.
class ElidedLabel : public QLabel
{
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QString shownText() const;
};
