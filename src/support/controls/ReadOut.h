#pragma once

#include <QFont>
#include <QVector>
#include <QWidget>

/// A text that is read from afar and changes many times a second: a clock.
///
/// It stands in the middle of the room it is given, grows with it, and is never smaller than its font. Each digit
/// takes the room of the widest one, so that nothing moves while the text counts. A text as long as the one before
/// costs no layout, and only the characters that differ are painted again.
///
/// The ground is painted in the background role that it has from its parent. A screen reader takes it for a label.
class ReadOut : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText)

public:
    explicit ReadOut(QWidget* parent = nullptr);

    QString text() const;
    void setText(const QString& text);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void placeCharacters();

    QString shown;
    QFont grown;

    /// Where each character of the text stands.
    QVector<QRect> places;
};
