#pragma once

#include <QWidget>
#include <memory>

class CommonDialog;
class EditorEngine;
class WindowLife;
namespace Ui {
class FilesPanel;
}

/// The file whose vocals are to be removed, and the file that is to be written.
///
/// A name that is chosen for either goes through the naming rule, and what comes out of that selects the format of
/// the editor's next export. A name that is typed does neither.
class FilesPanel : public QWidget
{
    Q_OBJECT

public:
    /// The editor, the dialog and the window's life outlive the panel.
    FilesPanel(EditorEngine& Editor, CommonDialog& dialog, WindowLife& life, QWidget* parent = nullptr);
    ~FilesPanel() override;

    /// The names as they stand in the boxes.
    QString inputFile() const;
    QString outputFile() const;

    /// Puts the keyboard where the work begins.
    void focusOnInput();

signals:
    /// A source was chosen, and the output file is named after it.
    void inputChosen();

private:
    void cmdInput_Click();
    void cmdOutput_Click();
    void nameOutputAfter(const QString& path);

    EditorEngine& Editor;
    CommonDialog& dialog;
    WindowLife& life;
    const std::unique_ptr<Ui::FilesPanel> ui;
};
