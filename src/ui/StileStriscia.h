#pragma once

namespace sonnel {

/// Style sheet of the strip with the toolbar, an object named "striscia" at the top of a window.
/// Light whatever the desktop's theme: the button images are drawn for it.
inline constexpr const char* StileStriscia =
    "#striscia { background: #f0f0f0; border-bottom: 1px solid #c8c8c8; }"
    "#striscia QToolBar { background: transparent; border: none; spacing: 0px; padding: 2px; }"
    "#striscia QLabel { background: transparent; }"
    "#striscia QToolButton { border: 1px solid transparent; border-radius: 5px; padding: 2px; }"
    "#striscia QToolButton:hover, #striscia QToolButton:focus {"
    "  background: #e0eaea; border-color: #9cc4c4; }"
    "#striscia QToolButton:pressed { background: #c8dcdc; }"
    "#striscia QToolButton:checked { background: #c8dcdc; border-color: #008080; }";

}  // namespace sonnel
