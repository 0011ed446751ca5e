#pragma once

#include <QIcon>
#include <QList>
#include <QTreeWidget>

/// The list of a disc's tracks: a row a track, in columns, of which one or none is selected. It is a picture and no
/// more: whoever holds the tracks writes the rows.
///
/// The column of the file's name has what room the others leave. A path that does not fit loses its first folders,
/// and the pointer over it shows it whole. A click beside the rows takes the selection away.
class TrackListView : public QTreeWidget
{
    Q_OBJECT

public:
    /// What is kept with a column besides its caption, as data of its header.
    enum ColumnData
    {
        Key = Qt::UserRole,
        Tag,
    };

    explicit TrackListView(QWidget* parent = nullptr);

    /// Makes the columns anew, with none of the rows, and attaches the images.
    void makeColumns();

    /// Pictures that rows can have, by the numbers of the files' formats. No row takes one: the format has a
    /// column.
    const QList<QIcon>& images() const { return imlAudioFiles; }

    int rowCount() const;

    /// The number, from 1, of the selected row; 0 where none is.
    int selectedRow() const;

    /// The file as it was written into a row, whole. Numbers are from 1.
    QString file(int row) const;

    void clearRows();
    void addRow(const QString& number, const QString& file, const QString& format, const QString& duration);

protected:
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void fitColumns();

    QList<QIcon> imlAudioFiles;
};
