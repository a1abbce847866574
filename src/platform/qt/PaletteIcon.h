#pragma once

#include <QIcon>
#include <QString>

namespace sonnel {

/// An SVG image whose lines have the colour of the palette's text at the moment it is painted, so
/// that it can be seen in light and dark themes alike. In the file these lines are #4c5f66, and
/// #008080 is the accent, which stays teal.
[[nodiscard]] QIcon PaletteIcon(const QString& file);

}  // namespace sonnel
