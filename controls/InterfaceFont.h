#pragma once

#include <QFont>

namespace velmor {

/// The font of the interface: the one that the desktop names, or Inter where the desktop names none
/// and Inter is installed.
///
/// A desktop names none if there is no desktop, or if what the toolkit takes for the system's font
/// is a stand-in ("Sans Serif") or isn't installed. Call it once at the start, with a
/// `QGuiApplication`, and make the answer the application's font.
[[nodiscard]] QFont interfaceFont();

} // namespace velmor
