// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>

#include <QImage>
#include <QObject>
#include <QTimer>

class DeviceManager;
class MappedLedItem;
class QLabel;
struct ZenBitmap;

/// The pixels that an element was last sent with; null when there are none.
using PixelsOfElement = std::function<const ZenBitmap*(const MappedLedItem&)>;

/// Shows the pixels of one element as they were sent last, so with the test picture, the mark of
/// the selection and every edit. Looks ten times a second while it can be seen.
class ElementPreview final : public QObject
{
    Q_OBJECT

public:
    /// `manager` and `label` outlive the preview.
    ElementPreview(const DeviceManager& manager, PixelsOfElement pixels, QLabel& label);

    /// 0 shows none.
    void ShowElement(std::int64_t id);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void StartOrStop();
    void Look();

    const DeviceManager& manager_;
    PixelsOfElement pixels_;
    QLabel& label_;
    std::int64_t id_ = 0;
    QImage shown_;
    QTimer timer_;
};
