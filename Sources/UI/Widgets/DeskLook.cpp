// SPDX-License-Identifier: MIT
#include "UI/Widgets/DeskLook.h"

#include <array>

#include <QApplication>
#include <QRegularExpression>

namespace {

/// A colour by its name in the sheet below, in both looks.
struct Role
{
    const char* name;
    QColor Look::*colour;
    QRgb grey;
    QRgb night;
};

constexpr auto Roles = std::to_array<Role>({
    {"window", &Look::window, 0x868686, 0x141517},
    {"windowText", &Look::windowText, 0x0c0d0f, 0xa9aeb4},
    {"windowTextFaded", &Look::windowTextFaded, 0x47494d, 0x62666c},
    {"line", &Look::line, 0x5a5c60, 0x303338},
    {"toolBarTop", &Look::toolBarTop, 0x646464, 0x1a1b1e},
    {"toolBarBottom", &Look::toolBarBottom, 0xc8c8c8, 0x141517},
    {"surroundTop", &Look::surroundTop, 0xcdd1d6, 0x0a0b0c},
    {"surroundBottom", &Look::surroundBottom, 0xbabec2, 0x0a0b0c},
    {"bar", &Look::bar, 0x25272b, 0x0d0e10},
    {"barText", &Look::barText, 0xeceef0, 0xa3a8ae},
    {"barTextFaded", &Look::barTextFaded, 0x8d9096, 0x5f6369},
    {"barLine", &Look::barLine, 0x4a4d53, 0x2a2c31},
    {"list", &Look::list, 0x141518, 0x0b0c0e},
    {"listAlternate", &Look::listAlternate, 0x1a1b1f, 0x101114},
    {"listText", &Look::listText, 0xe2e4e7, 0xa9aeb4},
    {"listTextFaded", &Look::listTextFaded, 0xc0c0c0, 0x777b81},
    {"listLine", &Look::listLine, 0x2c2e33, 0x1f2125},
    {"scrollBar", &Look::scrollBar, 0x2c2e33, 0x0f1012},
    {"scrollHandle", &Look::scrollHandle, 0x6a6d73, 0x3a3d42},
    {"scrollHandleHover", &Look::scrollHandleHover, 0x8d9096, 0x54585e},
    {"field", &Look::field, 0x1c1e22, 0x0b0c0e},
    {"fieldText", &Look::fieldText, 0xeceef0, 0xb4b9bf},
    {"fieldLine", &Look::fieldLine, 0x1c1e22, 0x3a3d43},
    {"checkLine", &Look::checkLine, 0x1c1e22, 0x6a6e74},
    {"button", &Look::button, 0x2e3136, 0x25272b},
    {"buttonText", &Look::buttonText, 0xeceef0, 0xb4b9bf},
    {"buttonHover", &Look::buttonHover, 0x3d4147, 0x303338},
    {"buttonChosen", &Look::buttonChosen, 0x17435c, 0x12384d},
    {"faded", &Look::faded, 0x4b4d51, 0x1b1c1f},
    {"fadedText", &Look::fadedText, 0xbec1c5, 0x83878d},
    {"accent", &Look::accent, 0x66bfef, 0x4a92b8},
    {"accentText", &Look::accentText, 0x0c0d0f, 0x050607},
    {"caution", &Look::caution, 0xffb347, 0xc98a2e},
    {"trouble", &Look::trouble, 0xff5a4d, 0xdd5449},
    {"message", &Look::message, 0x0c0d0f, 0x08090a},
    {"mixed", &Look::mixed, 0xc0c0c0, 0x2a2c31},
    {"mixedText", &Look::mixedText, 0x0c0d0f, 0xa9aeb4},
    {"cellMapped", &Look::cellMapped, 0xff0000, 0x5c1f1a},
    {"cellEmpty", &Look::cellEmpty, 0xa0a0a4, 0x26282c},
    {"cellFigure", &Look::cellFigure, 0x000000, 0xb4b9bf},
    {"cellOverlap", &Look::cellOverlap, 0xffe600, 0xb89f1e},
    {"cellBeyond", &Look::cellBeyond, 0x00e6ff, 0x1f9fb0},
    {"ownerA", &Look::ownerA, 0x1f3c57, 0x0b1a28},
    {"ownerB", &Look::ownerB, 0x4a2f4c, 0x221423},
    {"ownerC", &Look::ownerC, 0x23462f, 0x0d1f14},
    {"ownerD", &Look::ownerD, 0x54401f, 0x271c0b},
    {"receivedDots", &Look::receivedDots, 0x54585e, 0x33373c},
    {"lampOff", &Look::lampOff, 0x4a4c50, 0x202225},
    {"lampRimDark", &Look::lampRimDark, 0x46484c, 0x1f2124},
    {"lampRimLight", &Look::lampRimLight, 0xb0b2b6, 0x3c3f44},
});

// @ and the name of a role stands for its colour. The lists are nearly black in both looks: the
// red and the orange of an address in conflict or of none must be read on them too.
constexpr auto Sheet = R"(
QWidget, QFrame, QStackedWidget, QDockWidget { background: @window; color: @windowText; }
QLabel:disabled, QCheckBox:disabled, QRadioButton:disabled, QGroupBox:disabled {
    color: @windowTextFaded; }
QToolBar { background: qlineargradient(x1: 0, y1: 0, x2: 0, y2: 1,
    stop: 0 @toolBarTop, stop: 1 @toolBarBottom); border: none; spacing: 3px; padding: 3px; }
QToolBar QLabel { background: transparent; }
QToolBar::separator { background: @line; width: 1px; margin: 4px 3px; }
QToolBar QToolButton { background: @button; color: @buttonText; border: 2px solid @button;
    border-radius: 4px; padding: 2px; min-width: 20px; min-height: 20px; }
QToolBar QToolButton:hover { background: @buttonHover; border-color: @buttonHover; }
QToolBar QToolButton:checked { background: @buttonChosen; border-color: @accent; }
QToolBar QToolButton:pressed { background: @buttonChosen; }
QToolBar QToolButton:focus { border-color: @accent; }
QToolBar QToolButton[warns="true"] { background: @caution; border-color: @caution; }
QToolBar QToolButton[warns="true"]:hover { background: @caution; border-color: @accentText; }
QToolBar QToolButton[warns="true"]:focus { border-color: @buttonText; }
QToolBar QToolButton:disabled { background: @faded; border-color: @faded; }
QToolBar QToolButton[popupMode="2"] { padding-right: 14px; }
QToolBar #qt_toolbar_ext_button { background: @accent; border: none; padding: 0; min-width: 0; }
QToolBar QToolButton::menu-indicator { subcontrol-position: right center; right: 2px; }

QMenuBar { background: @bar; color: @barText; border: none; }
QMenuBar::item { background: transparent; padding: 4px 9px; }
QMenuBar::item:selected { background: @accent; color: @accentText; }
QMenu { background: @bar; color: @barText; border: 1px solid @barLine; padding: 3px; }
QMenu::item { padding: 4px 26px 4px 8px; }
QMenu::icon { padding-left: 6px; }
QMenu::item:selected { background: @accent; color: @accentText; }
QMenu::item:disabled { color: @barTextFaded; }
QMenu::item:selected:disabled { background: @bar; }
QMenu::separator { height: 1px; background: @barLine; margin: 3px 6px; }
QToolTip { background: @bar; color: @barText; border: 1px solid @barLine; padding: 2px; }
QStatusBar { background: @bar; color: @barText; }
QStatusBar QWidget { background: transparent; }
QStatusBar QLabel { color: @barText; padding: 0 4px; }
QStatusBar QLabel[warns="true"] { color: @caution; }
QStatusBar QLabel:disabled { color: @barTextFaded; }
QStatusBar QToolButton { color: @barText; border: 1px solid transparent; border-radius: 3px;
    padding: 0 4px; }
QStatusBar QToolButton:hover { background: @barLine; }
QStatusBar QToolButton:focus { border-color: @accent; }
QStatusBar #saveTroubleLabel { color: @trouble; font-weight: bold; }
QStatusBar::item { border: none; }
QSizeGrip { background: transparent; }

QDockWidget { color: @barText; font-weight: bold; }
QDockWidget::title { background: @bar; padding: 5px 8px; text-align: left; }
QMainWindow::separator { background: @line; width: 4px; height: 4px; }
QMainWindow::separator:hover { background: @accent; }
QTabWidget::pane { border: 1px solid @line; }
QTabBar::tab { background: @button; color: @buttonText; padding: 4px 10px; }
QTabBar::tab:selected { background: @list; border-bottom: 2px solid @accent; }

QAbstractItemView { background: @list; alternate-background-color: @listAlternate;
    color: @listText; border: 2px solid @listLine; selection-background-color: @accent;
    selection-color: @accentText; }
QAbstractItemView:disabled { color: @listTextFaded; }
QAbstractItemView:focus { border-color: @accent; }
#personalityTable { color: @windowText; gridline-color: @line; }
QTreeView::item { padding: 1px 0; }
QTreeView::item:selected { background: @accent; color: @accentText; }
QTreeView::item:selected:!active { background: @buttonChosen; color: @buttonText; }
QTreeView::branch:selected { background: @accent; }
QTreeView::branch:selected:!active { background: @buttonChosen; }
QHeaderView { background: @bar; border: none; }
QHeaderView::section { background: @bar; color: @barText; border: none;
    border-right: 1px solid @barLine; padding: 3px 6px; }

QPushButton { background: @button; color: @buttonText; border: 2px solid @button;
    border-radius: 4px; padding: 3px 12px; }
QPushButton:hover { background: @buttonHover; border-color: @buttonHover; }
QPushButton:pressed { background: @buttonChosen; }
QPushButton:default { background: @buttonChosen; border-color: @buttonChosen; }
QPushButton:checked { background: @buttonChosen; border-color: @accent; }
QPushButton:focus { border-color: @accent; }
QPushButton:checked:focus { border-color: @buttonText; }
QPushButton:disabled { background: @faded; color: @fadedText; border-color: @faded; }

QDialogButtonBox { dialogbuttonbox-buttons-have-icons: 0; }

QLineEdit, QAbstractSpinBox, QComboBox { background: @field; color: @fieldText;
    border: 2px solid @fieldLine; border-radius: 3px; padding: 1px 3px;
    selection-background-color: @accent; selection-color: @accentText; }
QComboBox[absent="true"] { color: @caution; border-color: @caution; }
QComboBox[absent="true"] QAbstractItemView { color: @listText; }
SteadyComboBox QAbstractItemView::item { padding: 3px 4px; }
QLineEdit:focus, QAbstractSpinBox:focus, QComboBox:focus { border-color: @accent; }
QLineEdit:disabled, QAbstractSpinBox:disabled, QComboBox:disabled { background: @faded;
    color: @fadedText; border-color: @faded; }
QComboBox::drop-down { border: none; width: 18px; }
QComboBox::down-arrow { image: url(:/bitmaps/Bin/bitmaps/icon_arrow_down.png); width: 8px;
    height: 8px; }
QComboBox QLineEdit, QAbstractSpinBox QLineEdit { border: none; padding: 0; }
QAbstractSpinBox { padding-right: 18px; }
QAbstractSpinBox::up-button, QAbstractSpinBox::down-button { background: @button; border: none;
    width: 16px; }
QAbstractSpinBox::up-button:hover, QAbstractSpinBox::down-button:hover {
    background: @buttonHover; }
QAbstractSpinBox::up-button:pressed, QAbstractSpinBox::down-button:pressed {
    background: @buttonChosen; }
QAbstractSpinBox::up-button:disabled, QAbstractSpinBox::down-button:disabled {
    background: @faded; }
QAbstractSpinBox::up-button { margin-bottom: 1px; }
QAbstractSpinBox::up-arrow { image: url(:/bitmaps/Bin/bitmaps/icon_arrow_up.png); }
QAbstractSpinBox::down-arrow { image: url(:/bitmaps/Bin/bitmaps/icon_arrow_down.png); }
QAbstractSpinBox::up-arrow, QAbstractSpinBox::down-arrow { width: 8px; height: 8px; }
IPCtrl { background: @field; border: 2px solid @fieldLine; border-radius: 3px; }
IPCtrl QLabel { background: @field; color: @fieldText; }
IPCtrl QLineEdit { border: none; border-radius: 0; padding: 0; }
IPCtrl QLineEdit:focus { background: @buttonChosen; }
IPCtrl QLineEdit:read-only { background: @faded; color: @fadedText; }
#ToggleMergingUniversesButton { min-height: 32px; }
#universeOverlapWarning, #errorMessage, #identifyTrouble { background: @message; color: @trouble;
    border-radius: 3px; padding: 3px 6px; }
QGroupBox { border: 1px solid @line; border-radius: 4px; margin-top: 1.2em; padding-top: 4px; }
QGroupBox::title { subcontrol-origin: margin; left: 8px; padding: 0 3px; }
QCheckBox, QRadioButton { border: 1px solid transparent; border-radius: 3px; padding: 1px 2px; }
QCheckBox:focus, QRadioButton:focus { border-color: @windowText; }
QCheckBox::indicator, QRadioButton::indicator { background: @field; border: 1px solid @checkLine;
    width: 12px; height: 12px; }
QCheckBox::indicator { border-radius: 2px; }
QRadioButton::indicator { border-radius: 7px; }
QCheckBox::indicator:hover, QRadioButton::indicator:hover { background: @buttonHover; }
QCheckBox::indicator:checked { image: url(:/bitmaps/Bin/bitmaps/icon_check.png); }
QRadioButton::indicator:checked { image: url(:/bitmaps/Bin/bitmaps/icon_radio.png); }
QCheckBox::indicator:disabled, QRadioButton::indicator:disabled { background: @faded;
    border-color: @faded; }
QScrollBar { background: @scrollBar; border: none; }
QScrollBar:vertical { width: 12px; }
QScrollBar:horizontal { height: 12px; }
QScrollBar::handle { background: @scrollHandle; border-radius: 4px; margin: 2px;
    min-height: 24px; min-width: 24px; }
QScrollBar::handle:hover { background: @scrollHandleHover; }
QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }
QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }
)";

/// A name that is no role doesn't pass for black.
QString ColourOf(const Look& look, const QString& name)
{
    for (const Role& role : Roles) {
        if (name == QLatin1String(role.name))
            return (look.*role.colour).name();
    }
    qFatal("No colour of the look is named %s", qPrintable(name));
}

Look MakeLook(QRgb Role::*colour, double lampStrength)
{
    Look look;
    for (const Role& role : Roles)
        look.*role.colour = QColor(role.*colour);
    look.lampStrength = lampStrength;
    return look;
}

const Look*& Current()
{
    static const Look* current = &GreyLook();
    return current;
}

} // namespace

const Look& GreyLook()
{
    static const Look look = MakeLook(&Role::grey, 1);
    return look;
}

const Look& NightLook()
{
    static const Look look = MakeLook(&Role::night, 0.55);
    return look;
}

const Look& CurrentLook()
{
    return *Current();
}

void UseLook(const Look& look)
{
    Current() = &look;
    const QString sheet = DeskStyleSheet(look);
    if (qApp->styleSheet() == sheet)
        return;
    QApplication::setPalette(DeskPalette(look));
    qApp->setStyleSheet(sheet);
}

QString DeskStyleSheet(const Look& look)
{
    static const QRegularExpression name(QStringLiteral("@(\\w+)"));
    const QString sheet = QString::fromLatin1(Sheet);
    QString filled;
    decltype(sheet.size()) done = 0;
    for (auto found = name.globalMatch(sheet); found.hasNext();) {
        const QRegularExpressionMatch match = found.next();
        filled += sheet.mid(done, match.capturedStart() - done);
        filled += ColourOf(look, match.captured(1));
        done = match.capturedEnd();
    }
    return filled + sheet.mid(done);
}

QPalette DeskPalette(const Look& look)
{
    QPalette palette(look.buttonText, look.button, look.button.lighter(), look.button.darker(),
                     look.line, look.fieldText, look.buttonText, look.list, look.window);
    palette.setColor(QPalette::WindowText, look.windowText);
    palette.setColor(QPalette::AlternateBase, look.listAlternate);
    palette.setColor(QPalette::Highlight, look.accent);
    palette.setColor(QPalette::HighlightedText, look.accentText);
    palette.setColor(QPalette::Link, look.windowText);
    palette.setColor(QPalette::ToolTipBase, look.bar);
    palette.setColor(QPalette::ToolTipText, look.barText);
    palette.setColor(QPalette::PlaceholderText, look.fadedText);
    palette.setColor(QPalette::Disabled, QPalette::WindowText, look.windowTextFaded);
    palette.setColor(QPalette::Disabled, QPalette::ButtonText, look.fadedText);
    palette.setColor(QPalette::Disabled, QPalette::Text, look.fadedText);
    return palette;
}
