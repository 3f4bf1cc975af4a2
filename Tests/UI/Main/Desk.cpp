// SPDX-License-Identifier: MIT
#include "UI/Main/Desk.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QSpinBox>
#include <QTest>
#include <QTreeView>

#include "UI/Main/WEFTMain.h"

namespace {

QString Plain(QString text)
{
    return text.remove(QLatin1Char('&'));
}

SeenBox Read(QDialog& dialog)
{
    SeenBox seen;
    seen.title = dialog.windowTitle();
    seen.hasParent = dialog.parent() != nullptr;
    const auto* box = qobject_cast<QMessageBox*>(&dialog);
    if (!box)
        return seen;
    seen.text = box->text();
    for (const QAbstractButton* button : box->buttons()) {
        seen.buttons.append(Plain(button->text()));
        const auto* push = qobject_cast<const QPushButton*>(button);
        if (push && push->isDefault())
            seen.byDefault = Plain(button->text());
    }
    seen.buttons.sort();
    return seen;
}

void Press(QDialog& dialog, const QString& text)
{
    if (text == QLatin1String("Escape")) {
        QTest::keyClick(&dialog, Qt::Key_Escape);
        return;
    }
    for (auto* button : dialog.findChildren<QAbstractButton*>()) {
        if (button->isVisible() && Plain(button->text()) == text) {
            QTest::mouseClick(button, Qt::LeftButton);
            return;
        }
    }
    ADD_FAILURE() << "no button " << text.toStdString();
    dialog.reject();
}

void WriteMode(const char* value)
{
    QFile file(QCoreApplication::applicationDirPath() + QStringLiteral("/mode.xml"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray("<Mode value=\"") + value + "\" />");
}

} // namespace

Operator::Operator()
{
    timer_.setInterval(5);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { Look(); });
    timer_.start();
}

void Operator::WillPress(const QString& button)
{
    acts_.emplace_back([button](QDialog& dialog) { Press(dialog, button); });
}

void Operator::Will(std::function<void(QDialog&)> act)
{
    acts_.push_back(std::move(act));
}

void Operator::WillChoose(const QString& file)
{
    acts_.emplace_back([file](QDialog& dialog) {
        auto* chooser = qobject_cast<QFileDialog*>(&dialog);
        ASSERT_TRUE(chooser);
        auto* name = chooser->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        ASSERT_TRUE(name);
        name->setText(file);
        QMetaObject::invokeMethod(chooser, "accept");
    });
}

void Operator::Look()
{
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (!dialog || !dialog->isVisible())
        return;
    timer_.stop();
    seen.push_back(Read(*dialog));
    if (acts_.empty()) {
        ADD_FAILURE() << "an unexpected box: " << seen.back().title.toStdString() << ": "
                      << seen.back().text.toStdString();
        dialog->reject();
        dialog->hide();
    } else {
        const auto act = acts_.front();
        acts_.erase(acts_.begin());
        // What the act opens is looked at too.
        timer_.start();
        act(*dialog);
    }
    timer_.start();
}

Desk::Desk()
{
    // A window that was closed has ended the program: no box would open any more.
    QTimer::singleShot(0, qApp, &QCoreApplication::quit);
    QCoreApplication::exec();
    home.UseAsHome();
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                       QString::fromStdString((home.Path() / "config").string()));
    WriteMode("LMT");
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

void Desk::Crash()
{
    window.reset();
}

QObject* Desk::FindObject(const char* name) const
{
    const QString wanted = QLatin1String(name);
    return window->objectName() == wanted ? window.get() : window->findChild<QObject*>(wanted);
}

QAction* Desk::Action(const char* name) const
{
    return Find<QAction>(name);
}

void Desk::Trigger(const char* name)
{
    ASSERT_TRUE(Action(name)->isEnabled()) << name;
    Action(name)->trigger();
}

void Desk::Type(QWidget* target, int key, Qt::KeyboardModifiers modifiers)
{
    // A box that closed took the keyboard with it.
    target->window()->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(target->window()));
    target->setFocus();
    QTest::keyClick(target, static_cast<Qt::Key>(key), modifiers);
}

QString Desk::Title() const
{
    return window->windowTitle();
}

bool Desk::SaveIsPossible() const
{
    return Action("actionSave_File")->isEnabled();
}

QString Desk::DocumentPath() const
{
    return QString::fromStdString((home.Path() / "data/LoomTap2/PixelWeft/mapping.wfm").string());
}

QString Desk::Path(const QString& name) const
{
    return QString::fromStdString(home.Path().string()) + QLatin1Char('/') + name;
}

QByteArray Desk::DocumentBytes() const
{
    QFile file(DocumentPath());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString Desk::WriteDocument(const QString& path, int width, int height,
                            const QString& network) const
{
    QFile demo(QStringLiteral(":/wfm/Resources/DemoMapping.wfm"));
    EXPECT_TRUE(demo.open(QIODevice::ReadOnly));
    const QByteArray bytes = demo.readAll();
    QString text = QString::fromUtf16(reinterpret_cast<const char16_t*>(bytes.constData()),
                                      static_cast<int>(bytes.size() / 2));
    text.replace(QRegularExpression(QStringLiteral("resolution=\"[^\"]*\"")),
                 QStringLiteral("resolution=\"%1,%2\"").arg(width).arg(height));
    text.replace(QRegularExpression(QStringLiteral(" network=\"[^\"]*\"")),
                 QStringLiteral(" network=\"%1\"").arg(network));
    WriteText(path, text);
    return path;
}

void Desk::WriteText(const QString& path, QString text)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    text.prepend(QChar(QChar::ByteOrderMark));
    file.write(reinterpret_cast<const char*>(text.utf16()), 2LL * text.size());
}

int Desk::PlacedFixtures() const
{
    return Find<QTreeView>("mappedTreeView")->model()->rowCount();
}

int Desk::CanvasWidth()
{
    int width = 0;
    person.Will([&width](QDialog& dialog) {
        width = dialog.findChild<QSpinBox*>(QStringLiteral("spinBoxWidth"))->value();
        dialog.reject();
    });
    Action("actionCanvas_Size")->trigger();
    return width;
}

void Desk::Edit()
{
    person.WillPress(QStringLiteral("OK"));
    Trigger("actionCanvas_Size");
}
