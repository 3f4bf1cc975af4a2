// SPDX-License-Identifier: MIT
#include "UI/Main/Desk.h"

#include "Model/DeviceModel.h"
#include "Support/Stage.h"
#include "UI/Editor/GraphCanvas.h"
#include "UI/Editor/MappingRectangle.h"
#include "UI/Library/LEDDeviceListView.h"
#include "UI/Widgets/Version.h"

namespace {

/// A window that was closed has ended the program: no box would open any more.
void ForgetTheEnd()
{
    QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(); });
    QCoreApplication::exec();
}

} // namespace

Desk::Desk()
{
    ForgetTheEnd();
    home.UseAsHome();
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, Path("config"_q));
    home.Write(QCoreApplication::applicationDirPath().toStdString() + "/mode.xml",
               "<Mode value=\"LMT\" />");
}

Desk::~Desk()
{
    EXPECT_TRUE(person.IsDone()) << "a box that was expected did not come";
}

// ---- Documents ---------------------------------------------------------------------------------

QString Desk::Element(QPointF centre, QSizeF size, int universe, int channel, const QString& node)
{
    return "<Element description=\"Bar\" fixture=\"%1\"><VideoMapping><center>%2,%3</center><size>%4,%5</size><rotation>0</rotation></VideoMapping><DMXMapping type=\"ArtNet\"><ArtNetMapping subnet=\"0\" universe=\"%6\" channel=\"%7\" ipconf=\"%8\" /></DMXMapping></Element>\n"_q
        .arg(Bar)
        .arg(centre.x())
        .arg(centre.y())
        .arg(size.width())
        .arg(size.height())
        .arg(universe)
        .arg(channel)
        .arg(node);
}

QString Desk::WriteDocument(const QString& name, const Show& show) const
{
    const QString text =
        "<LEDFixtureLibrary>\n</LEDFixtureLibrary>\n%1<Mapping name=\"Show\" version=\"1.0\" resolution=\"%2,%3\" network=\"%4\">\n%5</Mapping>\n"_q
            .arg(show.before)
            .arg(show.width)
            .arg(show.height)
            .arg(show.network, show.elements);
    home.Write(name.toStdString(), "\xEF\xBB\xBF" + text.toStdString());
    return Path(name);
}

QString Desk::Path(const QString& name) const
{
    return QString::fromStdString((home.Path() / name.toStdString()).string());
}

QString Desk::DocumentPath() const
{
    return Path("data/LoomTap2/PixelWeft/mapping.wfm"_q);
}

std::string Desk::Bytes(const QString& path)
{
    return Support::ReadBytes(path.toStdString());
}

QVariant Desk::Kept(const char* key)
{
    return QSettings("Zentri"_q, "PixelWeft3"_q).value(QLatin1String(key));
}

// ---- The window --------------------------------------------------------------------------------

void Desk::Start()
{
    window.reset();
    ForgetTheEnd();
    window = std::make_unique<WEFTMain>(boxes);
    window->show();
    window->LoadFirstDocument();
    window->GuardUnsavedWork();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    window->activateWindow();
}

void Desk::StartWith(const QString& elements)
{
    WriteDocument(DocumentPath(), {.elements = elements});
    // The network is written in another way than the list's.
    person.WillPress("OK"_q);
    Start();
    person.seen.clear();
}

void Desk::Trigger(const char* name) const
{
    ASSERT_TRUE(Action(name)->isEnabled()) << name;
    Action(name)->trigger();
}

void Desk::ChooseHalves()
{
    QImage picture(100, 100, QImage::Format_RGB32);
    picture.fill(LeftColour);
    QPainter(&picture).fillRect(50, 0, 50, 100, RightColour);
    ASSERT_TRUE(picture.save(Path("halves.png"_q)));
    person.WillChoose(Path("halves.png"_q));
    Trigger("actionChoose_Test_Image");
}

void Desk::Import(const QString& file, std::initializer_list<const char*> answers)
{
    person.seen.clear();
    person.WillChoose(file);
    for (const char* answer : answers)
        person.WillPress(QLatin1String(answer));
    Trigger("actionImport");
    QCoreApplication::processEvents(); // the notices come behind it
}

void Desk::Type(QWidget* target, int key, Qt::KeyboardModifiers modifiers)
{
    // A box that closed took the keyboard with it.
    target->window()->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(target->window()));
    target->setFocus();
    QTest::keyClick(target, static_cast<Qt::Key>(key), modifiers);
}

QString Desk::State() const
{
    const QString title = window->windowTitle();
    const bool saved = title == ProgramTitle() + " (saved)"_q;
    EXPECT_EQ(Action("actionSave_File")->isEnabled(), !saved);
    if (!saved && title != ProgramTitle()) {
        EXPECT_EQ(title, ProgramTitle() + " (unsaved)"_q);
        return "unsaved"_q;
    }
    return saved ? "saved"_q : QString();
}

int Desk::PlacedFixtures() const
{
    return Find<QTreeView>("mappedTreeView")->model()->rowCount();
}

double Desk::CanvasWidth() const
{
    return Scene().GetCanvas().GetSize().width();
}

void Desk::SetCanvasWidth(int width, bool keepPositions)
{
    person.Will([=, before = CanvasWidth()](QDialog& dialog) {
        auto* box = dialog.findChild<QSpinBox*>("spinBoxWidth"_q);
        EXPECT_EQ(box->value(), before);
        box->setValue(width);
        dialog.findChild<QCheckBox*>("cbKeepPositions"_q)->setChecked(keepPositions);
        dialog.accept();
    });
    Trigger("actionCanvas_Size");
    person.seen.pop_back();
}

// ---- The canvas --------------------------------------------------------------------------------

WeftMapEditorView& Desk::View() const
{
    return *Find<WeftMapEditorView>("mappingEditorView");
}

WeftMapEditorScene& Desk::Scene() const
{
    return *qobject_cast<WeftMapEditorScene*>(View().scene());
}

const MappingRectangle& Desk::Item(std::size_t row) const
{
    return *Scene().Find(Scene().AllIds().at(row));
}

QModelIndexList Desk::LibraryRows(const QString& product) const
{
    const QAbstractItemModel& library = *Find<QTreeView>("treeView")->model();
    return library.match(library.index(0, DeviceModel::NameColumn), Qt::DisplayRole, product, -1,
                         Qt::MatchExactly | Qt::MatchRecursive);
}

void Desk::DragFromLibrary(QPointF to, const QString& product)
{
    auto& list = *Find<LEDDeviceListView>("treeView");
    const QModelIndexList found = LibraryRows(product);
    ASSERT_EQ(found.size(), 1);
    list.expand(found.front().parent());
    list.scrollTo(found.front());
    const QPoint row = list.visualRect(found.front()).center();

    if (QGuiApplication::platformName() == QLatin1String("offscreen")) {
        // Without a display there are no drags: what this one carries is dropped by hand.
        QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier, row);
        const auto load = list.DragData();
        ASSERT_TRUE(load);
        const QString format = QLatin1String(LEDDeviceListView::FixtureMimeType);
        dropped = Stage::WallClock();
        DropData(format, load->data(format), to);
        return;
    }
    // The drag has an event loop of its own: the hand moves on from within.
    QWindow* screen = window->windowHandle();
    const QPoint target = View().viewport()->mapTo(window.get(), OnScreen(to));
    QTimer::singleShot(0, window.get(), [screen, target] {
        QTest::mouseMove(screen, target - QPoint(30, 30));
        QTest::mouseMove(screen, target);
        QTest::mouseRelease(screen, Qt::LeftButton, Qt::NoModifier, target);
    });
    QTest::mousePress(list.viewport(), Qt::LeftButton, Qt::NoModifier, row);
    const QPoint aside = row + QPoint(QApplication::startDragDistance(), 0);
    QMouseEvent move(QEvent::MouseMove, aside, list.viewport()->mapToGlobal(aside), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(list.viewport(), &move);
}
