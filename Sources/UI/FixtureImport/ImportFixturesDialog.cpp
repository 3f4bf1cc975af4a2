// SPDX-License-Identifier: MIT
#include "UI/FixtureImport/ImportFixturesDialog.h"

#include <algorithm>
#include <utility>

#include <QDir>
#include <QDropEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QShortcut>
#include <QTreeView>
#include <QUrl>
#include <QVBoxLayout>

#include "UI/Dialogs/OperatorBoxes.h"
#include "UI/FixtureImport/ImportAnswers.h"
#include "UI/FixtureImport/ImportDetails.h"
#include "UI/FixtureImport/ImportTreeDelegate.h"
#include "UI/FixtureImport/ImportTreeModel.h"
#include "UI/Widgets/SteadyComboBox.h"

using FixtureImport::ImportPlan;
using FixtureImport::PlanNode;
using FixtureImport::PlanState;
using FixtureImport::SameProduct;

namespace {

constexpr QSize DialogSize(1240, 660);
constexpr int DetailsWidth = 460;
constexpr int MapWidth = 84;
constexpr int StateWidth = 260;
constexpr int Indentation = 16;
constexpr int CellPadding = 18;
constexpr int ProgressWidth = 220;
/// Work that takes longer than this shows how far it is.
constexpr int ProgressMilliseconds = 500;
/// So few rows are all seen at once.
constexpr int RowsToExpand = 40;

QString Counted(int number)
{
    return QLocale().toString(number);
}

/// The rows of a tree when all are expanded, up to this number.
int CountRows(const PlanNode& node, int most)
{
    int rows = 0;
    for (const PlanNode* child : node.shown) {
        rows += 1 + CountRows(*child, most - rows);
        if (rows >= most)
            break;
    }
    return rows;
}

QString InWords(const ImportPlan::Counts& counts)
{
    if (counts.files == 0)
        return ImportFixturesDialog::tr("No files of fixtures (.json, .qxf, .wfl) were found.");
    QStringList words = {ImportFixturesDialog::tr("%1 of %2 fixtures to import.")
                             .arg(Counted(counts.chosen), Counted(counts.fixtures))};
    if (counts.known > 0)
        words << ImportFixturesDialog::tr("In the library already: %1.").arg(Counted(counts.known));
    if (counts.differing > 0)
        words << ImportFixturesDialog::tr("Other ones of a name in the library: %1.")
                     .arg(Counted(counts.differing));
    if (counts.leftOut > 0)
        words << ImportFixturesDialog::tr("Left out: %1.").arg(Counted(counts.leftOut));
    if (counts.unread > 0)
        words << ImportFixturesDialog::tr("Files that can't be read: %1.")
                     .arg(Counted(counts.unread));
    return words.join(QLatin1Char(' '));
}

} // namespace

QStringList LocalPaths(const QMimeData& data)
{
    QStringList paths;
    for (const QUrl& url : data.urls()) {
        if (url.isLocalFile())
            paths << url.toLocalFile();
    }
    return paths;
}

QStringList AskForFixtureFiles(OperatorBoxes& boxes, QWidget* parent)
{
    const QStringList filters{ImportFixturesDialog::tr("Fixture Files (*.wfl *.json *.qxf)"),
                              ImportFixturesDialog::tr("Fixture Library File (*.wfl)")};
    return boxes.OpenFiles(parent, ImportFixturesDialog::tr("Import Fixtures"), QDir::homePath(),
                           filters.join(QStringLiteral(";;")));
}

ImportFixturesDialog::ImportFixturesDialog(ImportPlan::Library library, OperatorBoxes& boxes,
                                           QWidget* parent)
    : FixedDialog(DialogSize, parent)
    , plan_(std::move(library))
    , reading_([this](FixtureImport::ImportedFile file) { model_->Add(std::move(file)); })
    , boxes_(boxes)
    , model_(new ImportTreeModel(plan_, this))
{
    setObjectName(QStringLiteral("importFixturesDialog"));
    setWindowTitle(tr("Import Fixtures"));
    setAcceptDrops(true);
    MakeTree();
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(MakeSearchRow());
    layout->addLayout(MakeLists(), 1);
    layout->addLayout(MakeChoiceRow());
    layout->addLayout(MakeStatusRow());
    buttons_ = MakeButtons(QDialogButtonBox::Cancel);
    import_ = buttons_->addButton(tr("&Import"), QDialogButtonBox::AcceptRole);
    import_->setObjectName(QStringLiteral("importButton"));
    import_->setDefault(true);
    // Else Return would cancel while nothing can be imported.
    buttons_->button(QDialogButtonBox::Cancel)->setAutoDefault(false);
    layout->addWidget(buttons_);
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, search_, [this] {
        search_->setFocus();
        search_->selectAll();
    });
    connect(&reading_, &ImportReading::progressed, this, &ImportFixturesDialog::ShowProgress);
    connect(&reading_, &ImportReading::ended, this, &ImportFixturesDialog::EndReading);
    connect(model_, &ImportTreeModel::choiceChanged, this, [this] {
        ShowCounts();
        ShowCurrent();
    });
    progressTimer_.setSingleShot(true);
    connect(&progressTimer_, &QTimer::timeout, progress_, &QWidget::show);
    ShowCounts();
}

ImportFixturesDialog::~ImportFixturesDialog() = default;

void ImportFixturesDialog::showEvent(QShowEvent* event)
{
    FixedDialog::showEvent(event);
    tree_->setFocus(); // What scrolls on a small screen has lost it.
}

// ---- Building ----------------------------------------------------------------------------------

void ImportFixturesDialog::MakeTree()
{
    tree_ = new QTreeView;
    tree_->setObjectName(QStringLiteral("importTree"));
    tree_->setAccessibleName(tr("Fixtures that were found"));
    tree_->setItemDelegate(new ImportTreeDelegate(tree_));
    tree_->setModel(model_);
    tree_->setUniformRowHeights(true); // thousands of rows are measured once
    tree_->setWordWrap(true);
    tree_->setAllColumnsShowFocus(true);
    tree_->setAlternatingRowColors(true);
    tree_->setIndentation(Indentation);
    tree_->installEventFilter(this);
    QHeaderView& header = *tree_->header();
    header.setSectionsMovable(false);
    header.setStretchLastSection(false);
    header.setSectionResizeMode(ImportTreeModel::NameColumn, QHeaderView::Stretch);
    const QFontMetrics metrics = tree_->fontMetrics();
    const auto widthOf = [&metrics](const char* text) {
        return metrics.horizontalAdvance(QLatin1String(text)) + CellPadding;
    };
    header.resizeSection(ImportTreeModel::MapColumn, MapWidth);
    header.resizeSection(ImportTreeModel::SizeColumn, widthOf("100x100"));
    header.resizeSection(ImportTreeModel::ChannelsColumn, widthOf("512"));
    header.resizeSection(ImportTreeModel::StateColumn, StateWidth);
    connect(tree_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &ImportFixturesDialog::ShowCurrent);
}

QHBoxLayout* ImportFixturesDialog::MakeSearchRow()
{
    auto* row = new QHBoxLayout;
    search_ = new QLineEdit;
    search_->setObjectName(QStringLiteral("importSearch"));
    search_->setPlaceholderText(tr("Find fixtures (Ctrl+F)"));
    search_->setAccessibleName(tr("Find fixtures"));
    search_->setClearButtonEnabled(true);
    search_->installEventFilter(this);
    row->addWidget(search_, 1);
    show_ = new SteadyComboBox;
    show_->setObjectName(QStringLiteral("importShow"));
    show_->setAccessibleName(tr("Which fixtures are shown"));
    show_->addItem(tr("All that was found"));
    show_->addItem(tr("New ones"), static_cast<int>(PlanState::New));
    show_->addItem(tr("Other ones of a name in the library"), static_cast<int>(PlanState::Differs));
    show_->addItem(tr("Those in the library already"), static_cast<int>(PlanState::Known));
    show_->addItem(tr("What is left out"), static_cast<int>(PlanState::LeftOut));
    row->addWidget(show_);
    connect(search_, &QLineEdit::textChanged, this, &ImportFixturesDialog::Search);
    connect(show_, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &ImportFixturesDialog::Search);
    row->addStretch(1);
    connect(AddButton(*row, "importAddFiles", tr("Add &Files...")), &QPushButton::clicked, this,
            &ImportFixturesDialog::AddFiles);
    connect(AddButton(*row, "importAddFolder", tr("Add F&older...")), &QPushButton::clicked, this,
            &ImportFixturesDialog::AddFolder);
    return row;
}

QPushButton* ImportFixturesDialog::AddButton(QHBoxLayout& row, const char* objectName,
                                             const QString& text)
{
    auto* button = new QPushButton(text);
    button->setObjectName(QLatin1String(objectName));
    button->setAutoDefault(false);
    row.addWidget(button);
    // Its style gives the button a minimum that a large font exceeds.
    button->ensurePolished();
    row.addStrut(button->sizeHint().height());
    return button;
}

QHBoxLayout* ImportFixturesDialog::MakeLists()
{
    details_ = new ImportDetails;
    details_->setFixedWidth(DetailsWidth);
    connect(details_, &ImportDetails::answered, this,
            [this](SameProduct answer) { model_->Answer(tree_->currentIndex(), answer); });
    auto* row = new QHBoxLayout;
    row->addWidget(tree_, 1);
    row->addWidget(details_);
    return row;
}

QHBoxLayout* ImportFixturesDialog::MakeChoiceRow()
{
    auto* row = new QHBoxLayout;
    connect(AddButton(*row, "importCheckAll", tr("&Check All")), &QPushButton::clicked, this,
            [this] { model_->ChooseShown(true); });
    connect(AddButton(*row, "importCheckNone", tr("Check &None")), &QPushButton::clicked, this,
            [this] { model_->ChooseShown(false); });
    row->addStretch(1);
    auto* label = new QLabel(tr("Where the library has &another fixture of a name:"));
    answerAll_ = new ImportAnswers;
    answerAll_->setObjectName(QStringLiteral("importAnswerAll"));
    answerAll_->setAccessibleName(tr("Where the library has another fixture of a name"));
    label->setBuddy(answerAll_);
    connect(answerAll_, &ImportAnswers::answered, model_, &ImportTreeModel::AnswerAll);
    row->addWidget(label);
    row->addWidget(answerAll_);
    return row;
}

QHBoxLayout* ImportFixturesDialog::MakeStatusRow()
{
    countLabel_ = new QLabel;
    countLabel_->setObjectName(QStringLiteral("importCounts"));
    progress_ = new QProgressBar;
    progress_->setObjectName(QStringLiteral("importProgress"));
    progress_->setAccessibleName(tr("Progress"));
    progress_->setFixedWidth(ProgressWidth);
    progress_->setTextVisible(false);
    QSizePolicy policy = progress_->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    progress_->setSizePolicy(policy);
    progress_->hide();
    auto* row = new QHBoxLayout;
    row->addWidget(countLabel_, 1);
    row->addWidget(progress_);
    return row;
}

// ---- Reading -----------------------------------------------------------------------------------

void ImportFixturesDialog::Read(const QStringList& paths)
{
    if (paths.isEmpty() || stage_ != Stage::Choosing)
        return;
    reading_.Read(paths);
    progressTimer_.start(ProgressMilliseconds);
    ShowCounts();
}

void ImportFixturesDialog::AddFiles()
{
    Read(AskForFixtureFiles(boxes_, this));
}

void ImportFixturesDialog::AddFolder()
{
    const QString folder = boxes_.ChooseDirectory(this, tr("Import Fixtures"));
    if (!folder.isEmpty())
        Read({folder});
}

void ImportFixturesDialog::EndReading()
{
    if (stage_ == Stage::Cancelling)
        return FixedDialog::reject();
    progressTimer_.stop();
    progress_->hide();
    if (CountRows(plan_.Top(), RowsToExpand) < RowsToExpand)
        tree_->expandAll();
    if (!tree_->currentIndex().isValid()) {
        QModelIndex first = model_->index(0, 0);
        while (tree_->isExpanded(first) && model_->rowCount(first) > 0)
            first = model_->index(0, 0, first);
        tree_->setCurrentIndex(first);
    }
    ShowCounts();
}

/// While files are read. It comes hundreds of times a second, and walks over nothing.
void ImportFixturesDialog::ShowProgress()
{
    if (stage_ != Stage::Choosing)
        return;
    progress_->setMaximum(reading_.Found());
    progress_->setValue(reading_.Given());
    countLabel_->setText(
        tr("Reading: %1 of %2 files").arg(Counted(reading_.Given()), Counted(reading_.Found())));
}

void ImportFixturesDialog::ShowCounts()
{
    if (stage_ != Stage::Choosing)
        return;
    const ImportPlan::Counts counts = plan_.Count();
    const bool isReading = reading_.IsReading();
    if (isReading)
        ShowProgress();
    else
        countLabel_->setText(InWords(counts));
    answerAll_->setEnabled(counts.differing > 0);
    answerAll_->Show(counts.differing > 0 ? plan_.CommonAnswer()
                                          : std::optional(SameProduct::LeaveOut));
    import_->setEnabled(!isReading && counts.chosen > 0);
}

void ImportFixturesDialog::dragEnterEvent(QDragEnterEvent* event)
{
    if (stage_ == Stage::Choosing && !LocalPaths(*event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void ImportFixturesDialog::dropEvent(QDropEvent* event)
{
    event->acceptProposedAction();
    Read(LocalPaths(*event->mimeData()));
}

// ---- Searching and choosing --------------------------------------------------------------------

void ImportFixturesDialog::Search()
{
    if (!wasSearching_) {
        expanded_.clear();
        for (const PlanNode* top : plan_.Top().shown) {
            for (const PlanNode* node : top->shown) {
                if (tree_->isExpanded(model_->IndexOf(*node)))
                    expanded_.insert(node);
            }
            if (tree_->isExpanded(model_->IndexOf(*top)))
                expanded_.insert(top);
        }
    }
    const PlanNode* current = model_->NodeAt(tree_->currentIndex());
    const QVariant state = show_->currentData();
    model_->Search(search_->text(), state.isValid()
                                        ? std::optional(static_cast<PlanState>(state.toInt()))
                                        : std::nullopt);
    wasSearching_ = plan_.IsSearching();
    ExpandRows();
    if (current && model_->IndexOf(*current).isValid())
        tree_->setCurrentIndex(model_->IndexOf(*current));
    ShowCurrent();
}

void ImportFixturesDialog::ExpandRows()
{
    if (plan_.IsSearching())
        return tree_->expandAll();
    for (const PlanNode* top : plan_.Top().shown) {
        if (expanded_.contains(top))
            tree_->expand(model_->IndexOf(*top));
        for (const PlanNode* node : top->shown) {
            if (expanded_.contains(node))
                tree_->expand(model_->IndexOf(*node));
        }
    }
}

void ImportFixturesDialog::ShowCurrent()
{
    details_->Show(model_->NodeAt(tree_->currentIndex()));
}

bool ImportFixturesDialog::SearchKey(int key)
{
    switch (key) {
    case Qt::Key_Escape: // the next one is for the dialog
        if (search_->text().isEmpty())
            return false;
        search_->clear();
        return true;
    case Qt::Key_Down:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!tree_->currentIndex().isValid())
            tree_->setCurrentIndex(model_->index(0, 0));
        tree_->setFocus(Qt::OtherFocusReason);
        return true;
    default:
        return false;
    }
}

bool ImportFixturesDialog::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (watched == search_ && SearchKey(key))
            return true;
        // A click on another column leaves the keyboard there, where there is nothing to check.
        if (watched == tree_ && key == Qt::Key_Space && tree_->currentIndex().column() != 0)
            tree_->setCurrentIndex(tree_->currentIndex().siblingAtColumn(0));
    }
    return FixedDialog::eventFilter(watched, event);
}

// ---- Importing ---------------------------------------------------------------------------------

std::vector<ImportPlan::Wanted> ImportFixturesDialog::Chosen() const
{
    return plan_.Chosen();
}

void ImportFixturesDialog::accept()
{
    if (import_->isEnabled())
        emit importRequested();
}

void ImportFixturesDialog::reject()
{
    if (stage_ == Stage::Cancelling)
        return;
    if (stage_ == Stage::Choosing && !reading_.IsReading())
        return FixedDialog::reject();
    const bool isImporting = stage_ == Stage::Importing;
    StartCancelling();
    if (isImporting)
        emit takeBackRequested();
    else
        reading_.Stop();
}

void ImportFixturesDialog::Finish()
{
    if (stage_ == Stage::Cancelling)
        FixedDialog::reject();
    else
        FixedDialog::accept();
}

/// Nothing can be chosen any more.
void ImportFixturesDialog::Freeze()
{
    for (QWidget* child : findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
        child->setEnabled(child == countLabel_ || child == progress_ || child == buttons_);
    import_->setEnabled(false);
}

void ImportFixturesDialog::StartCancelling()
{
    stage_ = Stage::Cancelling;
    Freeze();
    buttons_->setEnabled(false);
    countLabel_->setText(tr("Cancelling..."));
}

void ImportFixturesDialog::ShowImported(int done, int all)
{
    if (stage_ == Stage::Choosing) {
        stage_ = Stage::Importing;
        Freeze();
        progressTimer_.start(ProgressMilliseconds);
    }
    progress_->setMaximum(all);
    progress_->setValue(done);
    if (stage_ == Stage::Importing)
        countLabel_->setText(tr("Importing: %1 of %2 fixtures").arg(Counted(done), Counted(all)));
}
