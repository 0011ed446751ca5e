#include "encoding/TrackListView.h"

#include "support/ToolTipText.h"
#include "support/controls/AiryRows.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <algorithm>
#include <iterator>

namespace {

struct Column
{
    const char* caption;
    const char* key;
    const char* tag;
    int twips;

    /// As wide as the column's usual text.
    const char* sample;
};

// The keys and tags are those of another list, of files; nothing reads them.
constexpr Column columns[] = {
    {"Track", "NAME", "Stores the name of the item", 650, "00"},
    {"File name", "FORMAT", "Stores the date of the item", 3300, ""},
    {"Format", "SIZE", "Stores the size of the item", 700, "WMA"},
    {"Duration", "FUTURE_FORMAT", "", 900, "00:00:00"},
};
constexpr int fileColumn = 1;

constexpr int firstTwips = 1440;

constexpr int asPixels(int twips)
{
    constexpr int twipsPerPixel = 15;
    return (twips + twipsPerPixel / 2) / twipsPerPixel;
}

/// The path, without as many of its first folders as it takes to fit into the room.
QString shortened(const QString& path, const QFontMetrics& metrics, int room)
{
    if (metrics.horizontalAdvance(path) <= room)
        return path;
    for (qsizetype slash = path.indexOf(u'/', 1); slash >= 0; slash = path.indexOf(u'/', slash + 1)) {
        QString end = u'…' + path.mid(slash);
        if (metrics.horizontalAdvance(end) <= room)
            return end;
    }
    return metrics.elidedText(path.mid(path.lastIndexOf(u'/') + 1), Qt::ElideMiddle, room);
}

QList<QIcon> fileImages()
{
    QList<QIcon> images;
    for (const char* name : {"audio-x-wav", "audio-x-vorbis+ogg", "audio-mpeg", "audio-x-ms-wma"})
        images << QIcon::fromTheme(QString::fromLatin1(name), QIcon::fromTheme(QStringLiteral("audio-x-generic")));
    return images;
}

int marginOf(const QWidget* list)
{
    return list->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, list) + 1;
}

/// Shortens paths from their beginning.
class TrackRows : public AiryRows
{
public:
    using AiryRows::AiryRows;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        AiryRows::initStyleOption(option, index);
        if (index.column() == fileColumn && option->widget != nullptr)
            option->text =
                shortened(option->text, option->fontMetrics, option->rect.width() - 2 * marginOf(option->widget));
    }
};

}  // namespace

TrackListView::TrackListView(QWidget* parent)
    : QTreeWidget(parent)
{
    setItemDelegate(new TrackRows(this));
    setColumnCount(0);
}

void TrackListView::makeColumns()
{
    clear();
    hide();
    setColumnCount(static_cast<int>(std::size(columns)));
    for (int i = 0; i < columnCount(); ++i) {
        headerItem()->setText(i, QString::fromLatin1(columns[i].caption));
        headerItem()->setData(i, Key, QString::fromLatin1(columns[i].key));
        headerItem()->setData(i, Tag, QString::fromLatin1(columns[i].tag));
        header()->resizeSection(i, asPixels(firstTwips));
    }
    imlAudioFiles = fileImages();
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    header()->setSectionsMovable(false);
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(fileColumn, QHeaderView::Stretch);
    show();
    fitColumns();
}

// Wider where the letters need it.
void TrackListView::fitColumns()
{
    for (int i = 0; i < columnCount(); ++i) {
        const int sample = fontMetrics().horizontalAdvance(QLatin1String(columns[i].sample)) + 4 * marginOf(this);
        header()->resizeSection(i, std::max({asPixels(columns[i].twips), header()->sectionSizeHint(i), sample}));
    }
}

int TrackListView::rowCount() const
{
    return topLevelItemCount();
}

int TrackListView::selectedRow() const
{
    const QList<QTreeWidgetItem*> selected = selectedItems();
    return selected.isEmpty() ? 0 : indexOfTopLevelItem(selected.first()) + 1;
}

QString TrackListView::file(int row) const
{
    const QTreeWidgetItem* item = topLevelItem(row - 1);
    return item == nullptr ? QString() : item->text(fileColumn);
}

void TrackListView::clearRows()
{
    clear();
}

void TrackListView::addRow(const QString& number, const QString& file, const QString& format,
                           const QString& duration)
{
    auto* row = new QTreeWidgetItem(this, {number, file, format, duration});
    row->setToolTip(fileColumn, toolTipText(file));
}

void TrackListView::changeEvent(QEvent* event)
{
    QTreeWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        fitColumns();
}

// With nothing selected the first arrow key picks the row that has the keyboard's place instead of stepping over
// it.
void TrackListView::keyPressEvent(QKeyEvent* event)
{
    const bool arrow = event->key() == Qt::Key_Down || event->key() == Qt::Key_Up;
    if (arrow && selectedRow() == 0 && currentItem() != nullptr)
        currentItem()->setSelected(true);
    else
        QTreeWidget::keyPressEvent(event);
}

void TrackListView::mousePressEvent(QMouseEvent* event)
{
    if (!indexAt(event->position().toPoint()).isValid())
        clearSelection();
    QTreeWidget::mousePressEvent(event);
}

#include "moc_TrackListView.cpp"
