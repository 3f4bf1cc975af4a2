// SPDX-License-Identifier: MIT
#include "Support/Operator.h"

#include <gtest/gtest.h>

#include <QtTest>
#include <QtWidgets>

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
    EXPECT_TRUE(box->textFormat() == Qt::PlainText || !Qt::mightBeRichText(seen.text))
        << "markup in a name of the operator's: " << seen.text.toStdString();
    for (const auto* button : box->findChildren<QPushButton*>()) {
        if (button->isDefault())
            seen.byDefault = Plain(button->text());
    }
    return seen;
}

} // namespace

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
    if (!dialog || !dialog->isVisible() || (!inHand_.empty() && inHand_.back() == dialog))
        return;
    seen.push_back(Read(*dialog));
    if (acts_.empty()) {
        ADD_FAILURE() << "an unexpected box: " << seen.back().title.toStdString() << ": "
                      << seen.back().text.toStdString();
        dialog->reject();
        dialog->hide();
        return;
    }
    const auto act = acts_.front();
    acts_.erase(acts_.begin());
    timer_.start(); // what the act opens is looked at too
    inHand_.push_back(dialog);
    act(*dialog);
    inHand_.pop_back();
}

void Pick(QComboBox& combo, const char* entry)
{
    combo.setFocus();
    QTest::keyClick(&combo, Qt::Key_Down);
    ASSERT_TRUE(combo.view()->isVisible());
    const int row = combo.findText(QLatin1String(entry));
    ASSERT_GE(row, 0) << entry;
    combo.view()->setCurrentIndex(combo.model()->index(row, 0));
    QTest::keyClick(combo.view(), Qt::Key_Return);
    QCoreApplication::processEvents();
}

} // namespace Support
