// The program's file dialog filters as Qt's file dialog takes them.
#pragma once

#include <QString>
#include <QStringList>

namespace walrim {

/// "すべてのファイル (*.*)|*.*|標準ファイル (*.grc)|*.grc|" gives "すべてのファイル (*)" and "標準ファイル (*.grc)":
/// names and patterns come in turn, each followed by "|"; ";" stands between patterns, and "*.*" means every file, also
/// one without a dot.
[[nodiscard]] QStringList NameFilters(const QString& filter);

/// The extension of the last pattern, without the dot; empty where it has none.
[[nodiscard]] QString DefaultSuffix(const QString& filter);

}  // namespace walrim
