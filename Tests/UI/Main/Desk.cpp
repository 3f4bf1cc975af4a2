// SPDX-License-Identifier: MIT
#include "UI/Main/Desk.h"

#include "UI/Widgets/Version.h"

Desk::Desk()
{
    // A window that was closed has ended the program: no box would open any more.
    QTimer::singleShot(0, qApp, &QCoreApplication::quit);
    QCoreApplication::exec();
    home.UseAsHome();
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                       QString::fromStdString((home.Path() / "config").string()));
    WriteBytes(QCoreApplication::applicationDirPath() + "/mode.xml"_q, "<Mode value=\"LMT\" />");
}

Desk::~Desk()
{
    EXPECT_TRUE(person.IsDone()) << "a box that was expected did not come";
}

void Desk::Start()
{
    window.reset();
    window = std::make_unique<WEFTMain>(boxes);
    window->show();
    window->LoadFirstDocument();
    window->GuardUnsavedWork();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    window->activateWindow();
}

void Desk::StartWith(const QString& elements, int width, int height)
{
    WriteDocument(DocumentPath(), width, height, "2.X.X.X"_q, elements);
    // The network is written in another way than the list's.
    person.WillPress("OK"_q);
    Start();
    person.seen.clear();
}

QObject* Desk::FindObject(const char* name) const
{
    const QString wanted = QLatin1String(name);
    return window->objectName() == wanted ? window.get() : window->findChild<QObject*>(wanted);
}

void Desk::Trigger(const char* name)
{
    ASSERT_TRUE(Action(name)->isEnabled()) << name;
    Action(name)->trigger();
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
    EXPECT_TRUE(title.startsWith(ProgramTitle())) << title.toStdString();
    const QString state = title.mid(ProgramTitle().size());
    if (!state.isEmpty()) {
        EXPECT_TRUE(state.startsWith(" ("_q) && state.endsWith(QLatin1Char(')')));
        EXPECT_EQ(Action("actionSave_File")->isEnabled(), state == " (unsaved)"_q);
    }
    return state.mid(2).chopped(state.isEmpty() ? 0 : 1);
}

QString Desk::DocumentPath() const
{
    return Path("data/LoomTap2/PixelWeft/mapping.wfm"_q);
}

QString Desk::Path(const QString& name) const
{
    return QString::fromStdString(home.Path().string()) + QLatin1Char('/') + name;
}

QByteArray Desk::Bytes(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString Desk::WriteBytes(const QString& path, const QByteArray& bytes)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(file.write(bytes), bytes.size());
    return path;
}

QString Desk::Element(QPointF centre, QSizeF size, int rotation, int universe, int channel,
                      const QString& node)
{
    static int count = 0;
    return "<Element description=\"Bar %1\" fixture=\"%2\"><VideoMapping><center>%3,%4</center><size>%5,%6</size><rotation>%7</rotation></VideoMapping><DMXMapping type=\"ArtNet\"><ArtNetMapping subnet=\"0\" universe=\"%8\" channel=\"%9\" ipconf=\""_q
               .arg(++count)
               .arg(Bar)
               .arg(centre.x())
               .arg(centre.y())
               .arg(size.width())
               .arg(size.height())
               .arg(rotation)
               .arg(universe)
               .arg(channel) +
           node + "\" /></DMXMapping></Element>\n"_q;
}

QString Desk::WriteDocument(const QString& path, int width, int height, const QString& network,
                            const QString& elements, const QString& before)
{
    QString text =
        "<LEDFixtureLibrary>\n</LEDFixtureLibrary>\n%5<Mapping name=\"Show\" version=\"1.0\" resolution=\"%1,%2\" network=\"%3\">\n%4</Mapping>\n"_q
            .arg(width)
            .arg(height)
            .arg(network, elements, before);
    text.prepend(QChar(QChar::ByteOrderMark));
    return WriteBytes(path, QByteArray(reinterpret_cast<const char*>(text.utf16()),
                                       2 * static_cast<int>(text.size())));
}

int Desk::PlacedFixtures() const
{
    return Find<QTreeView>("mappedTreeView")->model()->rowCount();
}

int Desk::CanvasWidth()
{
    int width = 0;
    person.Will([&width](QDialog& dialog) {
        width = dialog.findChild<QSpinBox*>("spinBoxWidth"_q)->value();
        dialog.reject();
    });
    Trigger("actionCanvas_Size");
    person.seen.pop_back();
    return width;
}

void Desk::SetCanvasWidth(int width)
{
    person.Will([width](QDialog& dialog) {
        dialog.findChild<QSpinBox*>("spinBoxWidth"_q)->setValue(width);
        dialog.accept();
    });
    Trigger("actionCanvas_Size");
    person.seen.pop_back();
}

QVariant Desk::Kept(const char* key)
{
    return QSettings("Zentri"_q, "PixelWeft3"_q).value(QLatin1String(key));
}
