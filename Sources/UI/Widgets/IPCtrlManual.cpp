// SPDX-License-Identifier: MIT
#include "UI/Widgets/IPCtrlManual.h"

#include <QLineEdit>

namespace {

const QLatin1String Wildcard("X");
const QLatin1String Open("255");

void MakeEditable(QLineEdit& field, bool editable)
{
    field.setReadOnly(!editable);
    field.setFocusPolicy(editable ? Qt::StrongFocus : Qt::NoFocus);
}

} // namespace

// ---- The pattern of a network ------------------------------------------------------------------

void IPCtrlManualIPRange::SetOctet(const QString& octet, QLineEdit& field)
{
    field.setText(octet == Open ? QString(Wildcard) : octet);
    MakeEditable(field, true);
}

void IPCtrlManualIPRange::SetMaskedOctet(const QString&, const QString&, QLineEdit&)
{
    // A pattern lies in no other.
}

bool IPCtrlManualIPRange::IsOctetFinal(QLineEdit& field)
{
    if (field.text().isEmpty() || field.text() == QLatin1String("x") || field.text() == Open)
        field.setText(Wildcard);
    return field.text() == QLatin1String("0") || field.text() == Wildcard;
}

// ---- The address of a node ---------------------------------------------------------------------

void IPCtrlManualNodeIP::SetOctet(const QString& octet, QLineEdit& field)
{
    SetMaskedOctet(QString(), octet, field);
}

void IPCtrlManualNodeIP::SetMaskedOctet(const QString& octet, const QString& network,
                                        QLineEdit& field)
{
    const bool isOpen = network == Open;
    field.setText(isOpen ? octet : network);
    MakeEditable(field, isOpen);
}

bool IPCtrlManualNodeIP::IsOctetFinal(QLineEdit& field)
{
    return field.text() == QLatin1String("0");
}
