#include "support/ToolTipText.h"

#include <algorithm>

namespace {

/// About half the width of a small screen.
constexpr qsizetype toolTipColumns = 80;

}  // namespace

// Tool tips take what looks like mark-up for it, and do not break a long name without blanks. So the text becomes
// mark-up of our own, in the program's direction of writing.
QString toolTipText(const QString& text)
{
    QString shown;
    for (QStringView rest(text); !rest.isEmpty();) {
        qsizetype length = std::min(rest.size(), toolTipColumns);
        if (length < rest.size()) {
            if (const qsizetype blank = rest.left(length).lastIndexOf(u' '); blank > 0)
                length = blank + 1;
            else if (rest[length - 1].isHighSurrogate())
                --length;
        }
        if (!shown.isEmpty())
            shown += u'\n';
        shown += rest.left(length);
        rest = rest.mid(length);
    }
    return QStringLiteral("<p dir=\"ltr\" style=\"white-space:pre\">") + shown.toHtmlEscaped() +
           QStringLiteral("</p>");
}
