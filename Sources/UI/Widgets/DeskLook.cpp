// SPDX-License-Identifier: MIT
#include "UI/Widgets/DeskLook.h"

namespace {

// Names for the few colours there are. The lists are nearly black: the red and the orange of an
// address in conflict or of none must be read on them too.
constexpr auto Sheet = R"(
QWidget, QFrame, QStackedWidget, QDockWidget { background: rgb(134, 134, 134); color: #0c0d0f; }
QToolBar { background: qlineargradient(x1: 0, y1: 0, x2: 0, y2: 1,
    stop: 0 rgba(100, 100, 100, 255), stop: 1 rgba(200, 200, 200, 255));
    border: none; spacing: 3px; padding: 3px; }
QToolBar QLabel { background: transparent; }
QToolBar::separator { background: #5a5c60; width: 1px; margin: 4px 3px; }
QToolBar QToolButton { background: #25272b; color: #eceef0; border: 2px solid #25272b;
    border-radius: 4px; padding: 2px; min-width: 20px; min-height: 20px; }
QToolBar QToolButton:hover { background: #3a3d43; border-color: #3a3d43; }
QToolBar QToolButton:checked { background: #17435c; border-color: #66bfef; }
QToolBar QToolButton:pressed { background: #17435c; }
QToolBar QToolButton:focus { border-color: #66bfef; }
QToolBar QToolButton[warns="true"] { background: #ffb347; border-color: #ffb347; }
QToolBar QToolButton[warns="true"]:hover { background: #ffc266; }
QToolBar QToolButton[warns="true"]:focus { border-color: #eceef0; }
QToolBar QToolButton:disabled { background: #55575b; border-color: #55575b; }
QToolBar QToolButton[popupMode="2"] { padding-right: 14px; }
QToolBar #qt_toolbar_ext_button { background: #66bfef; border: none; padding: 0; min-width: 0; }
QToolBar QToolButton::menu-indicator { subcontrol-position: right center; right: 2px; }

QMenuBar { background: #25272b; color: #eceef0; border: none; }
QMenuBar::item { background: transparent; padding: 4px 9px; }
QMenuBar::item:selected { background: #66bfef; color: #0c0d0f; }
QMenu { background: #25272b; color: #eceef0; border: 1px solid #4a4d53; padding: 3px; }
QMenu::item { padding: 4px 26px 4px 8px; }
QMenu::icon { padding-left: 6px; }
QMenu::item:selected { background: #66bfef; color: #0c0d0f; }
QMenu::item:disabled { color: #8d9096; }
QMenu::separator { height: 1px; background: #4a4d53; margin: 3px 6px; }
QToolTip { background: #f2f3f4; color: #0c0d0f; border: 1px solid #25272b; padding: 2px; }
QStatusBar { background: #25272b; color: #eceef0; }
QStatusBar QLabel { background: transparent; color: #eceef0; padding: 0 6px; }
QStatusBar::item { border: none; }
QSizeGrip { background: transparent; }

QDockWidget { color: #eceef0; font-weight: bold; }
QDockWidget::title { background: #25272b; padding: 5px 8px; text-align: left; }
QMainWindow::separator { background: #55575b; width: 4px; height: 4px; }
QMainWindow::separator:hover { background: #66bfef; }
QTabBar::tab { background: #44474c; color: #eceef0; padding: 4px 10px; }
QTabBar::tab:selected { background: #141518; border-bottom: 2px solid #66bfef; }

QAbstractItemView { background: #141518; alternate-background-color: #1a1b1f; color: #e2e4e7;
    border: 2px solid #2c2e33; selection-background-color: #66bfef; selection-color: #0c0d0f; }
QAbstractItemView:focus { border-color: #66bfef; }
#personalityTable { color: #0c0d0f; gridline-color: #5a5c60; }
QTreeView::item { padding: 1px 0; }
QTreeView::item:selected { background: #66bfef; color: #0c0d0f; }
QTreeView::item:selected:!active { background: #4d8db0; color: #0c0d0f; }
QHeaderView { background: #25272b; border: none; }
QHeaderView::section { background: #25272b; color: #d4d6da; border: none;
    border-right: 1px solid #44474c; padding: 3px 6px; }

QPushButton { background: #2e3136; color: #eceef0; border: 2px solid #2e3136; border-radius: 4px;
    padding: 3px 12px; min-height: 16px; }
QPushButton:hover { background: #3d4147; border-color: #3d4147; }
QPushButton:pressed { background: #17435c; }
QPushButton:default { background: #17435c; border-color: #17435c; }
QPushButton:checked { background: #17435c; border-color: #66bfef; }
QPushButton:focus { border-color: #66bfef; }
QPushButton:checked:focus { border-color: #eceef0; }
QPushButton:disabled { background: #55575b; color: #d0d2d5; border-color: #55575b; }

QLineEdit, QAbstractSpinBox, QComboBox { background: #1c1e22; color: #eceef0;
    border: 2px solid #1c1e22; border-radius: 3px; padding: 1px 3px;
    selection-background-color: #66bfef; selection-color: #0c0d0f; }
QComboBox[absent="true"] { color: #ffb347; border-color: #ffb347; }
QComboBox[absent="true"] QAbstractItemView { color: #e2e4e7; }
SteadyComboBox QAbstractItemView::item { padding: 3px 4px; }
QLineEdit:focus, QAbstractSpinBox:focus, QComboBox:focus { border-color: #66bfef; }
QLineEdit:disabled, QAbstractSpinBox:disabled, QComboBox:disabled { background: #55575b;
    color: #d0d2d5; border-color: #55575b; }
QComboBox QLineEdit, QAbstractSpinBox QLineEdit { border: none; padding: 0; }
QAbstractSpinBox { padding-right: 18px; }
QAbstractSpinBox::up-button, QAbstractSpinBox::down-button { background: #2e3136; border: none;
    width: 16px; }
QAbstractSpinBox::up-button:hover, QAbstractSpinBox::down-button:hover { background: #3d4147; }
QAbstractSpinBox::up-button:pressed, QAbstractSpinBox::down-button:pressed { background: #17435c; }
QAbstractSpinBox::up-button { margin-bottom: 1px; }
QAbstractSpinBox::up-arrow { image: url(:/bitmaps/Bin/bitmaps/icon_arrow_up.png); }
QAbstractSpinBox::down-arrow { image: url(:/bitmaps/Bin/bitmaps/icon_arrow_down.png); }
QAbstractSpinBox::up-arrow, QAbstractSpinBox::down-arrow { width: 8px; height: 8px; }
IPCtrl { background: #1c1e22; border: 2px solid #1c1e22; border-radius: 3px; }
IPCtrl QLabel { background: #1c1e22; color: #eceef0; }
IPCtrl QLineEdit { border: none; border-radius: 0; padding: 0; }
IPCtrl QLineEdit:focus { background: #17435c; }
IPCtrl QLineEdit:read-only { background: #55575b; color: #d0d2d5; }
#ToggleMergingUniversesButton { min-height: 32px; }
#universeOverlapWarning, #errorMessage { background: #0c0d0f; border-radius: 3px;
    padding: 3px 6px; }
#errorMessage { color: #ff5a4d; }
QGroupBox { border: 1px solid #5a5c60; border-radius: 4px; margin-top: 1.2em; padding-top: 4px; }
QGroupBox::title { subcontrol-origin: margin; left: 8px; padding: 0 3px; }
QCheckBox, QRadioButton { border: 1px solid transparent; border-radius: 3px; padding: 1px 2px; }
QCheckBox:focus, QRadioButton:focus { border-color: #0c0d0f; }
QScrollBar { background: #2c2e33; border: none; }
QScrollBar:vertical { width: 12px; }
QScrollBar:horizontal { height: 12px; }
QScrollBar::handle { background: #6a6d73; border-radius: 4px; margin: 2px; min-height: 24px;
    min-width: 24px; }
QScrollBar::handle:hover { background: #8d9096; }
QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }
QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }
)";

} // namespace

QString DeskStyleSheet()
{
    return QString::fromLatin1(Sheet);
}

QPalette DeskPalette()
{
    const QColor grey(134, 134, 134);
    const QColor black(0x0c, 0x0d, 0x0f);
    const QColor white(0xec, 0xee, 0xf0);
    const QColor field(0x14, 0x15, 0x18);
    const QColor button(0x2e, 0x31, 0x36);
    const QColor accent(0x66, 0xbf, 0xef);
    const QColor faded(0xd0, 0xd2, 0xd5);
    QPalette palette(white, button, button.lighter(), button.darker(), grey, white, white, field,
                     grey);
    palette.setColor(QPalette::WindowText, black);
    palette.setColor(QPalette::AlternateBase, field.lighter(120));
    palette.setColor(QPalette::Highlight, accent);
    palette.setColor(QPalette::HighlightedText, black);
    palette.setColor(QPalette::Link, black);
    palette.setColor(QPalette::Disabled, QPalette::ButtonText, faded);
    palette.setColor(QPalette::Disabled, QPalette::Text, faded);
    palette.setColor(QPalette::PlaceholderText, faded);
    return palette;
}

QColor TroubleColour()
{
    return {0xff, 0x5a, 0x4d};
}

QColor WarningColour()
{
    return {0xff, 0xb3, 0x47};
}

QColor WarningInk()
{
    return {0x0c, 0x0d, 0x0f};
}
