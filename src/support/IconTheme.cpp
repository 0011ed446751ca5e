#include "support/IconTheme.h"

#include <QEvent>
#include <QGuiApplication>
#include <QIcon>
#include <QPalette>

namespace {

// The program's own themes hold its drawings and inherit all else from Breeze.
//
// Icons that exist already look themselves up again only when the search paths are set; a new fallback alone does
// not make them.
void chooseFallbackTheme()
{
    const QPalette palette = QGuiApplication::palette();
    const bool dark = palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
    const QString theme = dark ? QStringLiteral("larkspin-dark") : QStringLiteral("larkspin");
    if (QIcon::fallbackThemeName() == theme)
        return;
    QIcon::setFallbackThemeName(theme);
    QIcon::setThemeSearchPaths(QIcon::themeSearchPaths());
}

}  // namespace

IconTheme::IconTheme(QObject* parent)
    : QObject(parent)
{
    Q_INIT_RESOURCE(icons);
    chooseFallbackTheme();
    qApp->installEventFilter(this);
}

bool IconTheme::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ApplicationPaletteChange)
        chooseFallbackTheme();
    return QObject::eventFilter(watched, event);
}

#include "moc_IconTheme.cpp"
