#include "vocalremover/pictures/PictureColours.h"

#include <QByteArray>
#include <QPalette>
#include <array>

namespace {

QColor mixture(const QColor& ground, const QColor& ink, double share)
{
    const auto mix = [share](int of, int with) { return qRound(of + share * (with - of)); };
    return {mix(ground.red(), ink.red()), mix(ground.green(), ink.green()), mix(ground.blue(), ink.blue())};
}

}  // namespace

PictureColours::PictureColours(const QPalette& palette)
    : ground(palette.color(QPalette::Base))
    , letters(palette.color(QPalette::Text))
    , line(mixture(ground, letters, 0.35))
    , faint(mixture(ground, letters, 0.10))
    , accent(palette.color(QPalette::Highlight))
    , muted(mixture(ground, letters, 0.22))
    , knob(mixture(ground, letters, 0.12))
    , rim(mixture(ground, letters, 0.30))
    , level(accent)
{
}

QByteArray PictureColours::in(QByteArray drawing) const
{
    struct Variable
    {
        const char* name;
        const QColor& colour;
    };
    for (const auto& [name, colour] : std::array{
             Variable{"var(--ground)", ground}, Variable{"var(--letters)", letters}, Variable{"var(--line)", line},
             Variable{"var(--faint)", faint}, Variable{"var(--accent)", accent}, Variable{"var(--muted)", muted},
             Variable{"var(--knob)", knob}, Variable{"var(--rim)", rim}, Variable{"var(--level)", level}})
        drawing.replace(name, colour.name().toLatin1());
    return drawing;
}
