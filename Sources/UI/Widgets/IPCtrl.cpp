// SPDX-License-Identifier: MIT
#include "UI/Widgets/IPCtrl.h"

#include <algorithm>
#include <utility>

#include <QFocusEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpressionValidator>
#include <QStringList>

namespace {

constexpr int LongestOctet = 3;

/// As wide as three digits and the cursor, in whatever font.
class OctetField final : public QLineEdit
{
public:
    OctetField() { setTextMargins(-OwnMargin, 0, -OwnMargin, 0); }

    [[nodiscard]] QSize sizeHint() const override { return minimumSizeHint(); }
    [[nodiscard]] QSize minimumSizeHint() const override
    {
        const int digits = fontMetrics().horizontalAdvance(QStringLiteral("255"));
        return {digits + 1, QLineEdit::minimumSizeHint().height()};
    }

private:
    static constexpr int OwnMargin =
        2; ///< a line edit's, which four fields side by side don't need
};

bool IsModifier(int key)
{
    return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt ||
           key == Qt::Key_AltGr || key == Qt::Key_Meta;
}

} // namespace

IPCtrl::IPCtrl(QWidget* parent)
    : QFrame(parent)
{
    setFrameShape(QFrame::StyledPanel);
    setFrameShadow(QFrame::Sunken);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    setMaximumWidth(MaximumWidth);
    auto* row = new QHBoxLayout(this);
    row->setSpacing(0);
    row->setContentsMargins(1, 1, 1, 1);
    for (int place = 0; place < static_cast<int>(fields_.size()); ++place) {
        if (place > 0)
            row->addWidget(new QLabel(QStringLiteral(".")));
        AddField(place);
    }
    setFocusProxy(fields_.front());
    // Only after the field has taken its key.
    connect(this, &IPCtrl::signalTextChanged, this, &IPCtrl::slotTextChanged, Qt::QueuedConnection);
}

void IPCtrl::AddField(int place)
{
    static const QRegularExpression octet(
        QStringLiteral("^(x|X|0|[1-9]|[1-9][0-9]|1[0-9][0-9]|2([0-4][0-9]|5[0-5]))$"));
    auto* field = new OctetField;
    field->setObjectName(QStringLiteral("octet%1").arg(place + 1));
    field->setAccessibleName(tr("Part %1 of the address").arg(place + 1));
    field->setFrame(false);
    field->setAlignment(Qt::AlignCenter);
    QFont fixedPitch; // no more than the family: the size is the desktop's
    fixedPitch.setFamily(QStringLiteral("monospace"));
    fixedPitch.setStyleHint(QFont::Monospace);
    fixedPitch.setFixedPitch(true);
    field->setFont(fixedPitch);
    field->setValidator(new QRegularExpressionValidator(octet, field));
    field->installEventFilter(this);
    layout()->addWidget(field);
    fields_[static_cast<std::size_t>(place)] = field;
}

void IPCtrl::Clear()
{
    for (QLineEdit* field : fields_)
        field->clear();
}

void IPCtrl::SetIP(const QString& address)
{
    const QStringList octets = address.split(QLatin1Char('.'));
    if (octets.size() == static_cast<int>(fields_.size())) {
        for (int place = 0; place < octets.size(); ++place)
            SetOctet(octets[place], *fields_[static_cast<std::size_t>(place)]);
    }
    FocusFirstEditable();
}

void IPCtrl::SetIPAndMask(const QString& address, const QString& network)
{
    const QStringList octets = address.split(QLatin1Char('.'));
    const QStringList mask = network.split(QLatin1Char('.'));
    if (octets.size() == static_cast<int>(fields_.size()) && mask.size() == octets.size()) {
        for (int place = 0; place < octets.size(); ++place)
            SetMaskedOctet(octets[place], mask[place], *fields_[static_cast<std::size_t>(place)]);
    }
    FocusFirstEditable();
}

QString IPCtrl::GetIP() const
{
    return Joined(QString());
}

QString IPCtrl::GetIPWithWildcards() const
{
    return Joined(QStringLiteral("X"));
}

QString IPCtrl::Joined(const QString& forEmpty) const
{
    QStringList octets;
    for (const QLineEdit* field : fields_)
        octets.append(field->text().isEmpty() ? forEmpty : field->text());
    return octets.join(QLatin1Char('.'));
}

// ---- Keys and focus ----------------------------------------------------------------------------

bool IPCtrl::eventFilter(QObject* watched, QEvent* event)
{
    const auto field = std::find(fields_.begin(), fields_.end(), watched);
    if (field == fields_.end())
        return QFrame::eventFilter(watched, event);
    if (event->type() == QEvent::KeyPress)
        HandleKey(**field, *static_cast<QKeyEvent*>(event));
    if (event->type() == QEvent::FocusOut) {
        cameByItself_ = nullptr;
        // The mouse leaves a field without a key.
        if (static_cast<QFocusEvent*>(event)->reason() == Qt::MouseFocusReason)
            IsOctetFinal(**field);
    }
    return false;
}

void IPCtrl::HandleKey(QLineEdit& field, const QKeyEvent& key)
{
    // Shift moves nothing by itself: the X that it makes belongs to this field.
    if (IsModifier(key.key()))
        return;
    const int cursor = field.cursorPosition();
    const bool isEmpty = field.text().isEmpty();
    const bool dotIsPast = std::exchange(cameByItself_, nullptr) == &field;
    switch (key.key()) {
    case Qt::Key_Comma:
    case Qt::Key_Period:
        if (!dotIsPast)
            MoveToNext(field);
        return;
    case Qt::Key_0:
        if (isEmpty || field.text() == QLatin1String("0")) {
            field.setText(QStringLiteral("0"));
            MoveOnByItself(field);
        }
        break;
    case Qt::Key_Backspace:
        if (isEmpty || cursor == 0) {
            MoveToPrevious(field);
            field.home(false); // the key has nothing to delete there, not even an X that came now
        }
        return;
    case Qt::Key_Left:
        if (cursor < 2)
            MoveToPrevious(field);
        return;
    case Qt::Key_Right:
        if (isEmpty || cursor == field.text().size())
            MoveToNext(field);
        return;
    default:
        break;
    }
    emit signalTextChanged(&field);
}

void IPCtrl::slotTextChanged(QLineEdit* field)
{
    const bool isFull =
        field->text().size() == LongestOctet && field->cursorPosition() == field->text().size();
    const bool isDone = IsOctetFinal(*field) || isFull;
    // The key itself may have taken the focus elsewhere, as Shift+Tab does.
    if (isDone && field->hasFocus())
        MoveOnByItself(*field);
}

void IPCtrl::MoveOnByItself(QLineEdit& field)
{
    MoveToNext(field);
    if (!field.hasFocus())
        cameByItself_ = Neighbour(field, +1);
}

void IPCtrl::MoveToNext(QLineEdit& field)
{
    IsOctetFinal(field);
    QLineEdit* next = Neighbour(field, +1);
    if (!next || next->isReadOnly())
        return;
    next->setFocus();
    const int length = static_cast<int>(next->text().size());
    next->setSelection(length, -length); // backwards: the cursor stands at the beginning
}

void IPCtrl::MoveToPrevious(QLineEdit& field)
{
    IsOctetFinal(field);
    QLineEdit* previous = Neighbour(field, -1);
    if (!previous || previous->isReadOnly())
        return;
    previous->setFocus();
    previous->selectAll(); // with the cursor at the end
}

void IPCtrl::FocusFirstEditable()
{
    const auto field = std::find_if(fields_.begin(), fields_.end(),
                                    [](const QLineEdit* each) { return !each->isReadOnly(); });
    if (field == fields_.end())
        return;
    setFocusProxy(*field);
    (*field)->setFocus();
    (*field)->selectAll();
}

QLineEdit* IPCtrl::Neighbour(const QLineEdit& field, int step) const
{
    const auto place = std::find(fields_.begin(), fields_.end(), &field) - fields_.begin() + step;
    const bool exists = place >= 0 && place < static_cast<int>(fields_.size());
    return exists ? fields_[static_cast<std::size_t>(place)] : nullptr;
}

void IPCtrl::showEvent(QShowEvent* event)
{
    // Only now the font of the desktop is known.
    setMaximumWidth(std::max(MaximumWidth, layout()->totalMinimumSize().width()));
    QFrame::showEvent(event);
}
