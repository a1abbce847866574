#pragma once

#include "platform/PictureBox.h"

#include <QColor>

namespace sonnel {

inline QColor ToQColor(Colour colour) {
    const auto bits = static_cast<std::uint32_t>(colour);
    return {static_cast<int>(bits & 0xFFU), static_cast<int>((bits >> 8U) & 0xFFU),
            static_cast<int>((bits >> 16U) & 0xFFU)};
}

inline Colour FromQColor(const QColor& colour) {
    return colour.red() | colour.green() * 0x100 | colour.blue() * 0x10000;
}

}  // namespace sonnel
