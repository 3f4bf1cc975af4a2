// SPDX-License-Identifier: MIT
#include "UI/Inspector/ElementPreview.h"

#include <utility>

#include <QEvent>
#include <QLabel>
#include <QPixmap>

#include "LibTools/BlitterService.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"

ElementPreview::ElementPreview(const DeviceManager& manager, PixelsOfElement pixels, QLabel& label)
    : manager_(manager)
    , pixels_(std::move(pixels))
    , label_(label)
{
    constexpr int milliseconds = 100;
    timer_.setInterval(milliseconds);
    connect(&timer_, &QTimer::timeout, this, &ElementPreview::Look);
    label_.installEventFilter(this);
}

void ElementPreview::ShowElement(std::int64_t id)
{
    if (id == id_)
        return;
    id_ = id;
    StartOrStop();
}

bool ElementPreview::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Show || event->type() == QEvent::Hide)
        StartOrStop();
    if (event->type() == QEvent::Resize && timer_.isActive())
        Look();
    return QObject::eventFilter(watched, event);
}

void ElementPreview::StartOrStop()
{
    if (id_ != 0 && label_.isVisible()) {
        Look();
        timer_.start();
        return;
    }
    timer_.stop();
    label_.clear();
    shown_ = QImage();
}

void ElementPreview::Look()
{
    const MappedLedItem* element = manager_.GetMappedDeviceModel()->GetItemByUniqueID(id_);
    const ZenBitmap* pixels = element ? pixels_(*element) : nullptr;
    BlitterService* blitter = BlitterService::Get();
    if (!pixels || !blitter) {
        if (!shown_.isNull())
            label_.clear();
        shown_ = QImage();
        return;
    }
    QImage picture((QSizeF(label_.size()) * label_.devicePixelRatioF()).toSize(),
                   QImage::Format_RGB888);
    picture.fill(Qt::black);
    blitter->BitmapToImage(*pixels, picture);
    // A label lays itself out with each picture that it is given.
    if (picture == shown_)
        return;
    shown_ = picture;
    QPixmap pixmap = QPixmap::fromImage(picture);
    pixmap.setDevicePixelRatio(label_.devicePixelRatioF());
    label_.setPixmap(pixmap);
}
