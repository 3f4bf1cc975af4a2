// SPDX-License-Identifier: MIT
#include "UI/Editor/ElementClipboard.h"

#include <utility>

#include <QClipboard>
#include <QGuiApplication>

#include "LibTools/Qt5And6.h"
#include "Model/ElementText.h"

namespace {

/// Elements for other programs. Their text is written when one asks for it: most copies are pasted
/// here.
class ElementMimeData final : public QMimeData
{
public:
    explicit ElementMimeData(std::shared_ptr<const std::vector<ElementValues>> elements)
        : elements_(std::move(elements))
    {}

    [[nodiscard]] QStringList formats() const override
    {
        return {QLatin1String(ElementClipboard::MimeType)};
    }
    [[nodiscard]] bool hasFormat(const QString& format) const override
    {
        return format == QLatin1String(ElementClipboard::MimeType);
    }

protected:
    [[nodiscard]] QVariant retrieveData(const QString& format,
                                        Qt5And6::ValueType type) const override
    {
        if (!hasFormat(format))
            return QMimeData::retrieveData(format, type);
        return QByteArray::fromStdString(WriteElementText(*elements_));
    }

private:
    std::shared_ptr<const std::vector<ElementValues>> elements_;
};

} // namespace

ElementClipboard::ElementClipboard(QObject* parent)
    : QObject(parent)
{
    connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this, [this] {
        systemHasChanged_ = true;
        LookWhenInUse();
    });
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this,
            &ElementClipboard::LookWhenInUse);
}

void ElementClipboard::Change(const std::function<void()>& change)
{
    const bool before = IsArmed();
    change();
    if (IsArmed() != before)
        emit armedChanged(IsArmed());
}

void ElementClipboard::Copy(std::vector<ElementValues> elements)
{
    Change([&] {
        copied_ = std::make_shared<const std::vector<ElementValues>>(std::move(elements));
        isOffered_ = false;
    });
    own_ = new ElementMimeData(copied_);
    QGuiApplication::clipboard()->setMimeData(own_);
}

/// To ask what the clipboard has is to wait for the program that owns it. Nobody has to wait for a
/// program that hangs while the operator isn't here, so the question comes when it is of use.
void ElementClipboard::LookWhenInUse()
{
    if (systemHasChanged_ && QGuiApplication::applicationState() == Qt::ApplicationActive)
        LookAtSystem();
}

void ElementClipboard::LookAtSystem()
{
    systemHasChanged_ = false;
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    const bool ours = own_ && data == own_;
    Change([&] { isOffered_ = !ours && data && data->hasFormat(QLatin1String(MimeType)); });
}

std::vector<ElementValues> ElementClipboard::Take()
{
    std::vector<ElementValues> elements;
    Change([&] {
        if (std::exchange(isOffered_, false)) {
            if (const QMimeData* data = QGuiApplication::clipboard()->mimeData()) {
                const QByteArray bytes = data->data(QLatin1String(MimeType));
                elements = ReadElementText({bytes.constData(), std::size_t(bytes.size())});
            }
            if (!elements.empty())
                copied_.reset();
        } else if (copied_) {
            elements = *std::exchange(copied_, nullptr);
        }
    });
    return elements;
}
