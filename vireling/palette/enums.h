#pragma once

#include <QObject>

/*
 * The toolkit's enumerations whose names come out as text, in logs and in
 * debuggers, through Qt's meta-object system. They share one header because a
 * namespace has one meta-object.
 */
namespace Vireling {
Q_NAMESPACE

/**
 * What the toolkit paints besides Qt's own palette roles. The values are stored in
 * user palettes and must not be reordered.
 */
enum class ColourRole : qint32
{
    ActiveBase,
    ActiveText,
    HoverBase,
    Frame,
    PanelFrame,
    CellBase,
    CellAltBase,
    CellText,
    TableGrid,
    ViewItemBase,
    ViewItemAltBase,
    ViewItemText,
    ViewItemActiveBase,
    ViewItemActiveText,
    HeaderBase,
    HeaderText,
    SliderBase,
    ScrollBarBase,
    ScrollBarControlBase,
    ScrollBarControlFrame,
    TabBase,
    IndicatorBase,
    ArrowIconBase,
    MenuIconBase,
    AlternateHighlight,
    Success,
    Warning,
    Error,
    NColourRoles ///< how many roles there are; not a role
};
Q_ENUM_NS(ColourRole)

/** The choice of colours and of themed icons. */
enum class Theme : quint8
{
    System = 0,
    Dark = 1,
    Light = 2
};
Q_ENUM_NS(Theme)

/** The buttons of a window's title bar, in the order they stand in menus. */
enum class WindowControl
{
    Close = 0,
    Maximise = 1,
    Minimise = 2,
    Restore = 3
};
Q_ENUM_NS(WindowControl)

} // namespace Vireling
