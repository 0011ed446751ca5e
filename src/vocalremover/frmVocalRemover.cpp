#include "vocalremover/frmVocalRemover.h"

#include "engines/EditorEngine.h"
#include "engines/PlayerEngine.h"
#include "engines/VocalRemoverEngine.h"
#include "support/Pictures.h"
#include "ui_frmVocalRemover.h"
#include "vocalremover/FilesPanel.h"
#include "vocalremover/FilterPanel.h"
#include "vocalremover/PlayPreview.h"
#include "vocalremover/PreviewPanel.h"
#include "vocalremover/ProcessAudio.h"
#include "vocalremover/RemoverPlayers.h"
#include "vocalremover/RemoverStatus.h"
#include "vocalremover/VocalPositionPanel.h"

#include <QKeyEvent>
#include <utility>

namespace {

constexpr int helpContext = 160;

}  // namespace

frmVocalRemover::frmVocalRemover(VocalRemoverEngines given, const VocalRemoverSurroundings& surroundings,
                                 QWidget* parent)
    : QDialog(parent, Qt::Window)
    , surroundings(surroundings)
    , life(*this)
    , engines(std::move(given))
    , ui(std::make_unique<Ui::frmVocalRemover>())
{
    ui->setupUi(this);
    setWindowIcon(programIcon());
    files = new FilesPanel(*engines.Editor, surroundings.dialog, life, this);
    filter = new FilterPanel(this);
    vocalPosition = new VocalPositionPanel(life, this);
    preview = new PreviewPanel(this);
    status = std::make_unique<RemoverStatus>(*engines.Player, *engines.Editor, *ui->lblStatus, *ui->prgPercentDone);
    status->listenTo(*engines.VocalRemover);
    status->listenTo(*engines.VocalRemoverExtended);
    const RemoverParts parts{*engines.Player,
                             *engines.Editor,
                             *engines.VocalRemover,
                             *engines.VocalRemoverExtended,
                             *files,
                             *filter,
                             *vocalPosition,
                             *preview,
                             *status,
                             state,
                             life,
                             surroundings.msgBox};
    processAudio = std::make_unique<ProcessAudio>(parts);
    playPreview = std::make_unique<PlayPreview>(parts);
    placePanels();
    connectCommands();
    connectEngines();
    orderTabs();
    files->focusOnInput();
}

frmVocalRemover::~frmVocalRemover() = default;

void frmVocalRemover::Load()
{
    const auto owner = static_cast<int>(winId());
    engines.Player->InitPlayers(2, owner, 0, 0, 0, 0);
    engines.Editor->InitEditor(owner);
    vocalPosition->sldVocalPan_Change();
    filter->sldCutOffLow_Change();
    filter->sldCutOffHigh_Change();
    filter->sldGain_Change();
}

// The removers may be on the stack, and go with the window. What waits lies perhaps under another wait, of a
// command of the main window, and returns only behind that: the jobs are not to go on until then.
void frmVocalRemover::done(int result)
{
    life.close();
    for (DoneFlag* flag :
         {&state.SourceExportDone, &state.EditorLoadDone, &state.EffectFinished, &state.EditorExportDone})
        flag->giveUp();
    engines.VocalRemover->GiveUp();
    engines.VocalRemoverExtended->GiveUp();
    engines.Player.reset();
    engines.Editor.reset();
    QDialog::done(result);
    setEnabled(false);
}

void frmVocalRemover::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Cancel))
        event->ignore();
    else
        QDialog::keyPressEvent(event);
}

void frmVocalRemover::placePanels()
{
    ui->placeOfFiles->addWidget(files);
    ui->placeOfSettings->addWidget(filter, 3);
    ui->placeOfSettings->addWidget(vocalPosition, 2);
    ui->placeOfPreview->addWidget(preview);
}

void frmVocalRemover::connectCommands()
{
    connect(files, &FilesPanel::inputChosen, this, &frmVocalRemover::inputChosen);
    connect(preview, &PreviewPanel::playResultWanted, this, [this] { playPreview->cmdConvertPlayPreview_Click(); });
    connect(preview, &PreviewPanel::stopWanted, this, [this] { playPreview->cmdConvertStopPreview_Click(); });
    connect(preview, &PreviewPanel::playSourceWanted, this, [this] { playPreview->cmdPlayOriginal_Click(); });
    connect(ui->cmdProcess, &QToolButton::clicked, this, [this] { processAudio->cmdProcess_Click(); });
    connect(ui->cmdHelp, &QToolButton::clicked, this, [this] { surroundings.openHelp(helpContext); });
}

void frmVocalRemover::connectEngines()
{
    connect(engines.Player.get(), &PlayerEngine::ConversionDone, this, [this](short, int success) {
        if (success > 0)
            state.SourceExportDone.set();
    });
    const EditorEngine* Editor = engines.Editor.get();
    connect(Editor, &EditorEngine::LoadDone, this, [this] { state.EditorLoadDone.set(); });
    connect(Editor, &EditorEngine::EffectDone, this, [this] { state.EffectFinished.set(); });
    connect(Editor, &EditorEngine::ExportDone, this, [this] { state.EditorExportDone.set(); });
}

// From the files over what is set to what is heard of it, and on to the run. Inside a panel its form tells the
// order.
void frmVocalRemover::orderTabs()
{
    QWidgetList order;
    for (QWidget* panel : std::initializer_list<QWidget*>{files, filter, vocalPosition, preview}) {
        for (QWidget* next = panel->nextInFocusChain(); panel->isAncestorOf(next);
             next = next->nextInFocusChain()) {
            if (next->focusPolicy() & Qt::TabFocus)
                order << next;
        }
    }
    order << ui->cmdProcess << ui->cmdHelp;
    for (qsizetype i = 1; i < order.size(); ++i)
        setTabOrder(order[i - 1], order[i]);
}

// A source that the player cannot read is chosen all the same: a run or a preview says what is wrong with it.
void frmVocalRemover::inputChosen()
{
    preview->enableControls();
    ui->cmdProcess->setEnabled(true);
    if (engines.Player->LoadSoundForExport(SourcePlayer, files->inputFile()) == 0)
        preview->setUpPosition(*engines.Player);
}

#include "moc_frmVocalRemover.cpp"
