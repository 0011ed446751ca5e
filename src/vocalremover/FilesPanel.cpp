#include "vocalremover/FilesPanel.h"

#include "engines/EditorEngine.h"
#include "support/WindowLife.h"
#include "support/dialogs/AudioFileFilter.h"
#include "support/dialogs/CommonDialog.h"
#include "ui_FilesPanel.h"
#include "vocalremover/OutputFormat.h"
#include "vocalremover/OutputName.h"

namespace {

constexpr QLatin1StringView outputFilter(
    "WAV files (*.wav)|*.wav|MP3 files (*.mp3)|*.mp3|WMA files (*.wma)|*.wma|AAC files (*.aac)|*.aac|"
    "MP4 files (*.mp4)|*.mp4|Ogg Vorbis files (*.ogg)|*.ogg|FLAC files (*.flac)|*.flac");

FileDialogSetup setupWith(const QString& title)
{
    FileDialogSetup setup;
    setup.title = title;
    setup.maxFileSize = 32000;
    setup.flags = FileDialogSetup::Explorer | FileDialogSetup::NoLongNames | FileDialogSetup::AllowMultiselect;
    return setup;
}

}  // namespace

FilesPanel::FilesPanel(EditorEngine& Editor, CommonDialog& dialog, WindowLife& life, QWidget* parent)
    : QWidget(parent)
    , Editor(Editor)
    , dialog(dialog)
    , life(life)
    , ui(std::make_unique<Ui::FilesPanel>())
{
    ui->setupUi(this);
    connect(ui->cmdInput, &QToolButton::clicked, this, &FilesPanel::cmdInput_Click);
    connect(ui->cmdOutput, &QToolButton::clicked, this, &FilesPanel::cmdOutput_Click);
}

FilesPanel::~FilesPanel() = default;

QString FilesPanel::inputFile() const
{
    return ui->txtInputAudio->text();
}

QString FilesPanel::outputFile() const
{
    return ui->txtOutputAudio->text();
}

void FilesPanel::focusOnInput()
{
    ui->cmdInput->setFocus();
}

// A dialog that is cancelled answers with the empty name that it began with.
void FilesPanel::cmdInput_Click()
{
    const WindowLife::Routine routine(life);
    FileDialogSetup setup = setupWith(QStringLiteral("Open audio"));
    setup.filter = audioFileFilter;
    const FileDialogAnswer answer = dialog.ShowOpen(setup);
    if (answer.fileName.isEmpty() || life.isClosed())
        return;
    ui->txtInputAudio->setText(answer.fileName);
    nameOutputAfter(answer.fileName);
    emit inputChosen();
}

void FilesPanel::cmdOutput_Click()
{
    if (inputFile() == QLatin1String("choose input file"))
        return;
    const WindowLife::Routine routine(life);
    FileDialogSetup setup = setupWith(QStringLiteral("Save audio"));
    setup.filter = outputFilter;
    setup.filterIndex = 2;  // MP3
    const FileDialogAnswer answer = dialog.ShowSave(setup);
    if (answer.fileName.isEmpty() || life.isClosed())
        return;
    nameOutputAfter(answer.fileName);
}

void FilesPanel::nameOutputAfter(const QString& path)
{
    ui->txtOutputAudio->setText(nameWithoutVocals(path));
    SelectOutputFormat(outputFile(), Editor.EncodeFormats());
}

#include "moc_FilesPanel.cpp"
