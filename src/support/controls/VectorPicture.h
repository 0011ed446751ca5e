#pragma once

#include <QWidget>
#include <memory>

class QSvgRenderer;

/// A drawing that is drawn anew at each size and scale, as large as its room allows without distortion.
///
/// A source that cannot be read shows nothing.
class VectorPicture : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QString source READ source WRITE setSource)

public:
    explicit VectorPicture(QWidget* parent = nullptr);
    ~VectorPicture() override;

    QString source() const { return file; }

    /// Shows the SVG drawing of a file or a resource.
    void setSource(const QString& path);

    /// The size that the drawing itself names.
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString file;
    const std::unique_ptr<QSvgRenderer> drawing;
};
