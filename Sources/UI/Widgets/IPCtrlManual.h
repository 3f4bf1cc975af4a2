// SPDX-License-Identifier: MIT
#pragma once

#include "UI/Widgets/IPCtrl.h"

/// The pattern of a network: a field that is left empty is open, which shows as X. 255 is the same.
class IPCtrlManualIPRange final : public IPCtrl
{
    Q_OBJECT

public:
    using IPCtrl::IPCtrl;

protected:
    void SetOctet(const QString& octet, QLineEdit& field) override;
    void SetMaskedOctet(const QString& octet, const QString& network, QLineEdit& field) override;
    bool IsOctetFinal(QLineEdit& field) override;
};

/// The address of a node: only what the network leaves open, its octets of 255, can be typed.
class IPCtrlManualNodeIP final : public IPCtrl
{
    Q_OBJECT

public:
    using IPCtrl::IPCtrl;

protected:
    void SetOctet(const QString& octet, QLineEdit& field) override;
    void SetMaskedOctet(const QString& octet, const QString& network, QLineEdit& field) override;
    bool IsOctetFinal(QLineEdit& field) override;
};
