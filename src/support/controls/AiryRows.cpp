#include "support/controls/AiryRows.h"

QString AiryRows::displayText(const QVariant& value, const QLocale&) const
{
    QString text = value.toString();
    return text.replace(u'\n', u' ').replace(u'\r', u' ');
}

QSize AiryRows::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    constexpr int air = 8;
    return {QStyledItemDelegate::sizeHint(option, index).width(), option.fontMetrics.height() + air};
}
