#pragma once

#include <QStyledItemDelegate>

/// Rows of one line with a little air, to be hit with ease.
class AiryRows : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    /// A file's name may have line ends in it: a view would show no more than the first line.
    QString displayText(const QVariant& value, const QLocale& locale) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};
