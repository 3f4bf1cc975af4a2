// SPDX-License-Identifier: MIT
// guide-pictures FOLDER [LOOK]: takes the user guide's pictures of the real window into FOLDER, as
// a person would who follows the guide. With a LOOK, "grey" or "night", it takes them in that look,
// and the dialogs, boxes and menus, too, that the guide doesn't show. Tools/guide-pictures.sh runs
// it on a network of its own.
#include <algorithm>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <memory>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QFont>
#include <QGraphicsView>
#include <QMenu>
#include <QMouseEvent>
#include <QPixmap>
#include <QSettings>
#include <QStyleFactory>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolTip>
#include <QTreeView>

#include "ArtNet/ZenArtNetService.h"
#include "DebugVariables/DebugVariables.h"
#include "LibTools/Qt5And6.h"
#include "Log/Log.h"
#include "Platform/Locale.h"
#include "UI/Dialogs/OperatorBoxes.h"
#include "UI/Main/WEFTMain.h"
#include "UI/Widgets/DeskLook.h"

namespace {

/// Answers every box at once, so that none is in the picture.
class QuietBoxes final : public OperatorBoxes
{
public:
    bool Ask(QWidget*, const QString&, const QString&, QMessageBox::StandardButton) override
    {
        return true;
    }
    UnsavedAnswer AskToSave(QWidget*, const QString&, const QString&) override
    {
        return UnsavedAnswer::Discard;
    }
    bool Confirm(QWidget*, const QString&, const QString&) override { return true; }
    void Notify(QWidget*, const QString&, const QString&) override {}
    void Warn(QWidget*, const QString&, const QString&) override {}
    int Choose(const Choice&) override { return 0; }
    QString OpenFile(QWidget*, const QString&, const QString&, const QString&) override
    {
        return {};
    }
    QStringList OpenFiles(QWidget*, const QString&, const QString&, const QString&) override
    {
        return {};
    }
    QString SaveFile(QWidget*, const QString&, const QString&, const QString&,
                     const QString&) override
    {
        return {};
    }
    QString ChooseDirectory(QWidget*, const QString&) override
    {
        return QStringLiteral(":/definitions");
    }
};

class Photographer
{
public:
    explicit Photographer(QString folder)
        : folder_(std::move(folder))
    {}

    void OpenWindow(QSize size)
    {
        window_.reset();
        window_ = std::make_unique<WEFTMain>(boxes_);
        window_->resize(size);
        window_->show();
        window_->LoadFirstDocument();
        window_->StartTimers();
        window_->activateWindow();
        QTest::qWait(1500);
    }
    void WaitForNodes() const
    {
        const auto* nodes = window_->findChild<QTreeView*>(QStringLiteral("artNetNodes"));
        if (!QTest::qWaitFor([nodes] { return nodes->model()->rowCount() >= 2; }, 30'000))
            Fail(QStringLiteral("no nodes"));
    }
    void Take(const QString& name) const { Save(name, *window_); }
    void TakePart(const QString& part, const QString& name) const
    {
        auto* widget = window_->findChild<QWidget*>(part);
        if (!widget)
            return Fail(part);
        Save(name, *widget);
    }

    /// What opens behind this action.
    void TakeDialog(const QString& action, const QString& name)
    {
        WillTakeDialog(name);
        Do(action);
    }
    /// What opens behind the entry of a list that has this for its data.
    void TakeDialogOfEntry(const QString& list, const QString& entry, const QString& name)
    {
        auto* box = window_->findChild<QComboBox*>(list);
        if (!box || box->findData(entry) < 0)
            return Fail(list);
        WillTakeDialog(name);
        box->setCurrentIndex(box->findData(entry));
        emit box->activated(box->currentIndex());
    }
    /// What opens behind this button.
    void TakeDialogOfButton(const QString& button, const QString& name, int tab = 0)
    {
        auto* found = window_->findChild<QAbstractButton*>(button);
        if (!found)
            return Fail(button);
        WillTakeDialog(name, tab);
        found->click();
    }
    /// A box that opens by this call.
    template <typename Ask>
    void TakeBox(const QString& name, Ask ask)
    {
        WillTakeDialog(name);
        WidgetBoxes boxes;
        ask(boxes, window_.get());
    }
    /// The list of a menu or of a combo box, or a tool tip, while it is open.
    void TakePopup(QWidget& popup, const QString& name) const
    {
        popup.show();
        QTest::qWait(100);
        Save(name, popup);
        popup.hide();
    }
    void TakeMenu(const char* menu, const QString& name) const
    {
        auto* found = window_->findChild<QMenu*>(QLatin1String(menu));
        if (!found)
            return Fail(name);
        TakePopup(*found, name);
    }
    void TakeToolTip(const QString& name) const
    {
        QToolTip::showText(window_->mapToGlobal(QPoint(50, 50)),
                           QStringLiteral("Snap fixtures to the grid"), window_.get());
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (widget->inherits("QTipLabel"))
                Save(name, *widget); // at once: it goes by itself
        }
    }
    void TakeList(const char* combo, const QString& name) const
    {
        auto* found = window_->findChild<QComboBox*>(QLatin1String(combo));
        if (!found)
            return Fail(name);
        found->showPopup();
        QTest::qWait(100);
        Save(name, *found->view()->window());
        found->hidePopup();
    }
    /// Types into a field of the inspector.
    void TypeInto(const char* field, const QString& text) const
    {
        auto* box = window_->findChild<QAbstractSpinBox*>(QLatin1String(field));
        if (!box)
            return Fail(QLatin1String(field));
        box->setFocus();
        box->selectAll();
        QTest::keyClicks(box, text);
        QTest::keyClick(box, Qt::Key_Return);
    }
    /// The list of problems of a document that has some.
    void TakeProblems(const QString& name) const
    {
        Do(QStringLiteral("actionZoom_Fit"));
        Click({0.5, 0.5});
        TypeInto("spinBoxArtnetUniv", QStringLiteral("1"));
        BandOver({0.02, 0.02}, {0.2, 0.6});
        TypeInto("spinBoxX", QStringLiteral("-400"));
        Do(QStringLiteral("view_dockWidgetProblems"));
        QTest::qWait(1500);
        auto* list = window_->findChild<QTreeView*>(QStringLiteral("problems"));
        if (!list || list->model()->rowCount() == 0)
            return Fail(name);
        list->setCurrentIndex(list->model()->index(0, 0));
        QTest::qWait(300);
        Take(name);
        Do(QStringLiteral("view_dockWidgetProblems"));
        Do(QStringLiteral("actionUndo"));
        Do(QStringLiteral("actionUndo"));
    }
    /// The import of the definitions that the camera brings along, with one of them selected.
    void TakeImport(const QString& mode, const QString& name) const
    {
        QTimer::singleShot(500, window_.get(), [this, mode, name] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            auto* tree =
                dialog ? dialog->findChild<QTreeView*>(QStringLiteral("importTree")) : nullptr;
            const QModelIndex row = tree ? Find(*tree, mode) : QModelIndex();
            if (!row.isValid())
                return Fail(name);
            tree->setCurrentIndex(row);
            Save(name, *dialog);
            dialog->reject();
        });
        Do(QStringLiteral("actionImport_fixture_folder"));
    }
    void SelectFixture(const QString& product) const
    {
        auto* list = window_->findChild<QTreeView*>(QStringLiteral("treeView"));
        const QModelIndex found = Find(*list, product);
        if (!found.isValid())
            return Fail(product);
        list->setCurrentIndex(found);
    }
    void WillTakeDialog(const QString& name, int tab = 0, int tries = 10)
    {
        QTimer::singleShot(300, window_.get(), [this, name, tab, tries] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (!dialog)
                return tries > 0 ? WillTakeDialog(name, tab, tries - 1) : Fail(name);
            if (auto* tabs = dialog->findChild<QTabWidget*>())
                tabs->setCurrentIndex(tab);
            Save(name, *dialog);
            dialog->reject();
        });
    }
    void Do(const QString& action) const
    {
        auto* found = window_->findChild<QAction*>(action);
        if (!found)
            return Fail(action);
        found->trigger();
        QTest::qWait(100);
    }

    /// For what is shown ten times a second, with frames counted over two seconds.
    static void Wait() { QTest::qWait(2500); }

    /// Points on the canvas in fractions of its width and height.
    void Click(QPointF at) const
    {
        QTest::mouseClick(View().viewport(), Qt::LeftButton, {}, OnScreen(at));
        QTest::qWait(300); // The status bar follows the mouse ten times a second.
    }
    void BandOver(QPointF from, QPointF to) const
    {
        QTest::mousePress(View().viewport(), Qt::LeftButton, {}, OnScreen(from));
        for (const double share : {0.5, 1.0}) {
            const QPoint place = OnScreen(from + share * (to - from));
            QMouseEvent move(QEvent::MouseMove, place, View().viewport()->mapToGlobal(place),
                             Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(View().viewport(), &move);
        }
        QTest::mouseRelease(View().viewport(), Qt::LeftButton, {}, OnScreen(to));
        QTest::qWait(100);
    }
    /// The tool tip on the way of the pixel that is here.
    void TakePixelWay(QPointF at, const QString& name) const
    {
        const QPoint place = OnScreen(at);
        QTest::keyPress(window_->windowHandle(), Qt::Key_Alt, Qt::AltModifier);
        QMouseEvent move(QEvent::MouseMove, place, View().viewport()->mapToGlobal(place),
                         Qt::NoButton, Qt::NoButton, Qt::AltModifier);
        QCoreApplication::sendEvent(View().viewport(), &move);
        QTest::qWait(1000); // It tells of frames, which a busy camera holds up.
        const QWidgetList open = QApplication::topLevelWidgets();
        const auto tip = std::find_if(open.begin(), open.end(), [](const QWidget* widget) {
            return widget->inherits("QTipLabel") && widget->isVisible();
        });
        if (tip == open.end())
            return Fail(name);
        Save(name, **tip);
        QTest::keyRelease(window_->windowHandle(), Qt::Key_Alt);
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(View().viewport(), &leave);
    }
    [[nodiscard]] static bool Failed() { return failed_; }

private:
    [[nodiscard]] static QModelIndex Find(const QTreeView& list, const QString& text)
    {
        return list.model()
            ->match(list.model()->index(0, 0), Qt::DisplayRole, text, 1,
                    Qt::MatchExactly | Qt::MatchRecursive)
            .value(0);
    }
    [[nodiscard]] QGraphicsView& View() const
    {
        return *window_->findChild<QGraphicsView*>(QStringLiteral("mappingEditorView"));
    }
    [[nodiscard]] QPoint OnScreen(QPointF at) const
    {
        // The demonstration's canvas.
        return View().mapFromScene(QPointF(at.x() * 640, at.y() * 360));
    }
    void Save(const QString& name, QWidget& widget) const
    {
        if (!widget.grab().save(folder_ + QLatin1Char('/') + name + QStringLiteral(".png")))
            Fail(name);
    }
    static void Fail(const QString& what)
    {
        std::cerr << "This went wrong: " << qPrintable(what) << '\n';
        failed_ = true;
    }

    QString folder_;
    QuietBoxes boxes_;
    std::unique_ptr<WEFTMain> window_;
    static inline bool failed_ = false;
};

/// How one finds out what goes out, what is on a channel, and which fixture is which.
void TakeOutput(const Photographer& photographer)
{
    photographer.Do(QStringLiteral("view_dockWidgetUniverses"));
    Photographer::Wait();
    photographer.Take(QStringLiteral("universes"));
    photographer.TakeMenu("universeLegendMenu", QStringLiteral("universes-legend"));
    photographer.Do(QStringLiteral("view_dockWidgetUniverses"));
    photographer.TakePixelWay({0.5, 0.5}, QStringLiteral("pixel-way"));
    photographer.Do(QStringLiteral("actionIdentify"));
    photographer.TakePart(QStringLiteral("identifyPanel"), QStringLiteral("identify"));
    photographer.Do(QStringLiteral("actionIdentify"));
}

/// How one makes a fixture.
void TakeFixtures(Photographer& photographer)
{
    photographer.TakeDialogOfButton(QStringLiteral("buttonCustomFixture"),
                                    QStringLiteral("fixture-size"));
    photographer.SelectFixture(QStringLiteral("iFlex"));
    photographer.TakeDialogOfButton(QStringLiteral("buttonEditFixture"),
                                    QStringLiteral("fixture-editor"));
    photographer.SelectFixture(QStringLiteral("Trackpod 90 (Mode 1 - 48ch)"));
    photographer.TakeDialogOfButton(QStringLiteral("buttonEditFixture"),
                                    QStringLiteral("fixture-channels"), 1);
    photographer.TakeImport(QStringLiteral("196 Channels"), QStringLiteral("import-fixtures"));
}

void PutDemo(const QString& data)
{
    const QString document = data + QStringLiteral("/LoomTap2/PixelWeft/mapping.wfm");
    QFile::remove(document);
    QFile::copy(QStringLiteral(":/wfm/Resources/DemoMapping.wfm"), document);
    QFile::setPermissions(document, QFile::ReadOwner | QFile::WriteOwner);
}

void FollowTheGuide(const QString& folder, const QString& data)
{
    Photographer photographer(folder);
    photographer.OpenWindow({1024, 600});
    photographer.Take(QStringLiteral("first-start"));

    PutDemo(data);
    photographer.OpenWindow({1280, 760});
    photographer.WaitForNodes();
    photographer.Take(QStringLiteral("demo"));
    photographer.TakePart(QStringLiteral("toolBar"), QStringLiteral("network-panel"));
    photographer.TakeDialog(QStringLiteral("actionMergerSettings"), QStringLiteral("merger"));
    photographer.Click({0.5, 0.5});
    photographer.Take(QStringLiteral("one-selected"));
    const Look& look = CurrentLook();
    UseLook(NightLook());
    photographer.Take(QStringLiteral("night"));
    UseLook(look);
    const QString inspector = QStringLiteral("objectInspectorPannel");
    photographer.TakePart(inspector, QStringLiteral("inspector-one"));
    TakeOutput(photographer);
    photographer.TakeDialog(QStringLiteral("actionDuplicate_Element"), QStringLiteral("duplicate"));
    photographer.TakeDialog(QStringLiteral("actionExport_Patch"), QStringLiteral("patch-export"));
    photographer.TakeDialogOfEntry(QStringLiteral("comboBoxsArtnetIP"), QStringLiteral("manual"),
                                   QStringLiteral("manual-node"));
    TakeFixtures(photographer);
    photographer.BandOver({0.02, 0.02}, {0.36, 0.6});
    photographer.Take(QStringLiteral("group-selected"));
    photographer.TakePart(inspector, QStringLiteral("inspector-many"));
    photographer.TakeDialog(QStringLiteral("actionRepatch"), QStringLiteral("repatch"));
    photographer.TakeDialog(QStringLiteral("actionCanvas_Size"), QStringLiteral("canvas-size"));
    photographer.TakeDialog(QStringLiteral("actionPreferences"), QStringLiteral("preferences"));
    for (int step = 0; step < 5; ++step)
        photographer.Do(QStringLiteral("actionZoom_In"));
    photographer.Take(QStringLiteral("zoomed"));
    photographer.TakeProblems(QStringLiteral("problems"));
    for (const char* edit : {"actionRotate_Right_90", "actionActionDelete"}) {
        photographer.Do(QLatin1String(edit));
        photographer.Do(QStringLiteral("actionSave_File"));
    }
    photographer.TakeDialog(QStringLiteral("actionVersions"), QStringLiteral("versions"));
}

/// What the guide doesn't show.
void TakeTheRest(const QString& folder)
{
    Photographer photographer(folder);
    photographer.OpenWindow({1280, 760});
    photographer.WaitForNodes();
    photographer.TakeDialog(QStringLiteral("actionAbout"), QStringLiteral("about"));
    photographer.TakeDialogOfEntry(QStringLiteral("networkCombo"), QStringLiteral("new"),
                                   QStringLiteral("ip-range"));
    const auto words = [](const char* text) {
        return QCoreApplication::translate("DocumentLife", text);
    };
    const QString text =
        words("Your current mapping has unsaved changes.\n\nAre you sure you want to import the "
              "mapping and lose your changes?");
    photographer.TakeBox(QStringLiteral("question"), [&](OperatorBoxes& boxes, QWidget* window) {
        static_cast<void>(boxes.Ask(window, words("Unsaved Mapping"), text, QMessageBox::Cancel));
    });
    photographer.TakeBox(QStringLiteral("warning"), [&](OperatorBoxes& boxes, QWidget* window) {
        static_cast<void>(boxes.Confirm(window, QStringLiteral("Warning"), text));
    });
    photographer.TakeBox(QStringLiteral("no-parent"), [&](OperatorBoxes& boxes, QWidget*) {
        boxes.Notify(nullptr, QStringLiteral("Network"), text);
    });
    photographer.TakeBox(QStringLiteral("open-file"), [&](OperatorBoxes& boxes, QWidget* window) {
        static_cast<void>(boxes.OpenFile(window, words("Import Mapping"), QString(),
                                         words("Mapping files (*.wfm)")));
    });
    for (const char* menu : {"menuFile", "menuEdit", "menuView"})
        photographer.TakeMenu(menu, QLatin1String(menu));
    photographer.TakeList("networkCombo", QStringLiteral("networks"));
    photographer.TakeToolTip(QStringLiteral("tool-tip"));
    photographer.OpenWindow({1024, 600});
    photographer.Do(QStringLiteral("view_dockWidgetUniverses"));
    Photographer::Wait();
    photographer.Take(QStringLiteral("universes-small"));
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 2 || argc > 3 || !std::getenv("STAGE_NET")) {
        std::cerr << "Run Tools/guide-pictures.sh: it gives me a network of its own.\n";
        return 64;
    }
    // Nothing of the user's files and settings is read or written.
    const QTemporaryDir home;
    const QString data = home.filePath(QStringLiteral("data"));
    qputenv("HOME", home.path().toUtf8());
    qputenv("XDG_DATA_HOME", data.toUtf8());
    qputenv("XDG_CONFIG_HOME", home.filePath(QStringLiteral("config")).toUtf8());
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    Qt5And6::FollowScaleOfScreen();
    const QApplication application(argc, argv);
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
    Platform::UseUtf8TextAndPlainNumbers();
    Zen::ArtNetService::SetGlobal(
        std::make_shared<Zen::ArtNetService>("Zentri PixelWeft", "#0001 [0001] Ready", false));
    Zen::DebugVariables::SetGlobal(std::make_shared<Zen::DebugVariables>());
    const QString folder = QString::fromLocal8Bit(argv[1]);
    const QByteArray look = argv[2];
    if (look == "night")
        QSettings(QStringLiteral("Zentri"), QStringLiteral("PixelWeft3"))
            .setValue(QStringLiteral("nightLook"), true);
    FollowTheGuide(folder, data);
    if (!look.isEmpty())
        TakeTheRest(folder);
    Zen::DebugVariables::SetGlobal(nullptr);
    Zen::ArtNetService::SetGlobal(nullptr);
    Zen::Log::SetGlobal(nullptr);
    return Photographer::Failed() ? EXIT_FAILURE : EXIT_SUCCESS;
}
