// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include <QPixmap>
#include <QWidget>

struct DocumentSummary;

/// The layout of a document, canvas and elements, fitted into this size (device-independent pixels)
/// and in the middle of it.
[[nodiscard]] QPixmap DrawLayout(const DocumentSummary& summary, QSize size, qreal pixelRatio);

/// Shows the layout of a document as large as the widget is.
class LayoutPicture : public QWidget
{
    Q_OBJECT

public:
    using QWidget::QWidget;

    /// Null shows nothing.
    void Show(std::shared_ptr<const DocumentSummary> summary);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::shared_ptr<const DocumentSummary> summary_;
    QPixmap drawn_; ///< null until it is painted
};
