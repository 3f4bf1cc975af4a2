// SPDX-License-Identifier: MIT
#include "Support/Operator.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

namespace Support {

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

} // namespace Support
