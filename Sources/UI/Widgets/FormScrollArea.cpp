// SPDX-License-Identifier: MIT
#include "UI/Widgets/FormScrollArea.h"

#include <QEvent>
#include <QScrollBar>

FormScrollArea::FormScrollArea(QWidget* parent)
    : QScrollArea(parent)
{
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    // The keyboard goes to the fields.
    setFocusPolicy(Qt::NoFocus);
}

QSize FormScrollArea::sizeHint() const
{
    return {minimumSizeHint().width(), QScrollArea::sizeHint().height()};
}

QSize FormScrollArea::minimumSizeHint() const
{
    const QSize usual = QScrollArea::minimumSizeHint();
    if (!widget())
        return usual;
    return {widget()->minimumSizeHint().width() + verticalScrollBar()->sizeHint().width() +
                2 * frameWidth(),
            usual.height()};
}

bool FormScrollArea::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == widget() && event->type() == QEvent::LayoutRequest)
        updateGeometry();
    return QScrollArea::eventFilter(watched, event);
}
