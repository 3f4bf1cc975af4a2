// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include <QMimeData>
#include <QObject>
#include <QPointer>

#include "Model/ElementCopies.h"

/// The elements that the next paste takes: those that were copied here, or those that another
/// program put on the system's clipboard afterwards. One copy is good for one paste.
class ElementClipboard : public QObject
{
    Q_OBJECT

public:
    /// Of the bytes that WriteElementText gives.
    static constexpr const char* MimeType = "application/x-pixelweft-elements";

    explicit ElementClipboard(QObject* parent = nullptr);

    /// Keeps these elements, of which there are some, and puts them on the system's clipboard.
    void Copy(std::vector<ElementValues> elements);
    [[nodiscard]] bool IsArmed() const { return copied_ || isOffered_; }
    /// The elements for one paste. None when there are none, or when what another program offered
    /// can't be read: then what was copied here is next.
    [[nodiscard]] std::vector<ElementValues> Take();

signals:
    void armedChanged(bool armed);

private:
    void LookAtSystem();
    void LookWhenInUse();
    void Change(const std::function<void()>& change);

    std::shared_ptr<const std::vector<ElementValues>> copied_;
    QPointer<QMimeData> own_;      ///< what we put on the system's clipboard, while it is there
    bool isOffered_ = false;       ///< the system's clipboard has elements of another program
    bool systemHasChanged_ = true; ///< and was not looked at since
};
