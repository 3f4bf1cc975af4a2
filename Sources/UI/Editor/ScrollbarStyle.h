// SPDX-License-Identifier: MIT
#pragma once

#include <QProxyStyle>

/// Scroll bars that stay where they are and don't fade.
class ScrollbarStyle : public QProxyStyle
{
    Q_OBJECT

public:
    using QProxyStyle::QProxyStyle;

    [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption* option = nullptr,
                                const QWidget* widget = nullptr,
                                QStyleHintReturn* returnData = nullptr) const override
    {
        return hint == SH_ScrollBar_Transient
                   ? 0
                   : QProxyStyle::styleHint(hint, option, widget, returnData);
    }
};
