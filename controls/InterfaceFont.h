#pragma once

#include <QFont>
#include <QFontDatabase>

namespace velmor {

/// The font of the interface: the one that the desktop names, or Inter where the desktop names none
/// and Inter is installed.
///
/// A desktop names none if there is no desktop, or if what the toolkit takes for the system's font
/// is a stand-in ("Sans Serif") or isn't installed. Call it once at the start, with a
/// `QGuiApplication`, and make the answer the application's font. `system` is what the toolkit
/// takes for the system's font.
[[nodiscard]] QFont
interfaceFont(const QFont &system = QFontDatabase::systemFont(QFontDatabase::GeneralFont));

} // namespace velmor
