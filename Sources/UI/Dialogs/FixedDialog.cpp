// SPDX-License-Identifier: MIT
#include "UI/Dialogs/FixedDialog.h"

#include <algorithm>

#include <QHBoxLayout>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QStyle>
#include <QVBoxLayout>

namespace {

/// What a desktop draws round a dialog, at most: it isn't known before the dialog is shown.
constexpr QSize WindowFrame(16, 40);

} // namespace

FixedDialog::FixedDialog(QSize requested, QWidget* parent)
    : QDialog(parent)
    , requested_(requested)
{
    setFixedSize(requested);
}

QDialogButtonBox* FixedDialog::MakeButtons(QDialogButtonBox::StandardButtons which)
{
    auto* buttons = new QDialogButtonBox(which);
    buttons->setObjectName(QStringLiteral("buttonBox"));
    buttons_ = buttons;
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    return buttons;
}

FixedDialog::ButtonsWithDelete FixedDialog::MakeButtonsWithDelete()
{
    QDialogButtonBox* buttons = MakeButtons(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    const ButtonsWithDelete made = {new QHBoxLayout, buttons->button(QDialogButtonBox::Ok),
                                    buttons->button(QDialogButtonBox::Cancel),
                                    new QPushButton(tr("Delete"))};
    made.ok->setObjectName(QStringLiteral("okButton"));
    made.cancel->setObjectName(QStringLiteral("cancelButton"));
    made.cancel->setText(tr("Cancel"));
    made.remove->setObjectName(QStringLiteral("deleteButton"));
    made.remove->setAutoDefault(false);
    made.row->addWidget(made.remove);
    made.row->addWidget(buttons);
    return made;
}

// ---- The size ----------------------------------------------------------------------------------

void FixedDialog::setVisible(bool visible)
{
    if (visible) {
        ensurePolished(); // only now the fonts of the style are known
        Fit();
    }
    QDialog::setVisible(visible);
}

void FixedDialog::Request(QSize requested)
{
    requested_ = requested;
    if (isVisible())
        Fit();
}

void FixedDialog::showEvent(QShowEvent* event)
{
    // Some controls take their width from the font when they are shown.
    Fit();
    layout()->activate();
    QDialog::showEvent(event);
}

void FixedDialog::Fit()
{
    const QSize room = screen()->availableSize() - WindowFrame;
    const QSize needed = scroll_ ? QSize() : NeededSize();
    if (needed.width() > room.width() || needed.height() > room.height())
        MakeContentsScroll();
    setFixedSize(scroll_ ? ScrollingSize().boundedTo(room) : needed);
}

QSize FixedDialog::NeededSize() const
{
    // A wrapped text needs its height at this width.
    const int width = std::max(requested_.width(), layout()->totalMinimumSize().width());
    const int height = layout()->hasHeightForWidth() ? layout()->minimumHeightForWidth(width)
                                                     : layout()->totalMinimumSize().height();
    return {width, std::max(requested_.height(), height)};
}

void FixedDialog::MakeContentsScroll()
{
    auto* contents = new QWidget;
    contents->setLayout(layout()); // takes it, with the widgets in it
    scroll_ = new QScrollArea;
    scroll_->setObjectName(QStringLiteral("dialogScrollArea"));
    scroll_->setFrameShape(QFrame::NoFrame);
    scroll_->setFocusPolicy(Qt::NoFocus); // the keyboard goes to the fields
    scroll_->setWidgetResizable(true);
    scroll_->setWidget(contents);
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins({});
    outer->addWidget(scroll_, 1);
    if (!buttons_)
        return;
    // Nobody has to look for OK and Cancel.
    auto* row = new QVBoxLayout;
    row->setContentsMargins(contents->layout()->contentsMargins());
    row->addWidget(buttons_);
    outer->addLayout(row);
}

QSize FixedDialog::ScrollingSize() const
{
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, scroll_);
    const int others = layout()->totalMinimumSize().height() - scroll_->minimumSizeHint().height();
    return scroll_->widget()->minimumSizeHint() + QSize(bar, bar + others);
}
