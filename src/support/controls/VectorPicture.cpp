#include "support/controls/VectorPicture.h"

#include <QPainter>
#include <QSvgRenderer>

VectorPicture::VectorPicture(QWidget* parent)
    : QWidget(parent)
    , drawing(std::make_unique<QSvgRenderer>())
{
}

VectorPicture::~VectorPicture() = default;

void VectorPicture::setSource(const QString& path)
{
    file = path;
    drawing->load(path);
    drawing->setAspectRatioMode(Qt::KeepAspectRatio);  // a new drawing begins with its own
    updateGeometry();
    update();
}

QSize VectorPicture::sizeHint() const
{
    return drawing->isValid() ? drawing->defaultSize() : QSize(0, 0);
}

void VectorPicture::paintEvent(QPaintEvent*)
{
    if (!drawing->isValid())
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    drawing->render(&painter, rect());
}

#include "moc_VectorPicture.cpp"
