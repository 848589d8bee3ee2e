// What a drop on the window brings.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

class QMimeData;

namespace walrim {

/// Files from a file manager, and links or a text.
struct Dropped {
  QStringList files;
  QStringList texts;
};

/// What dragged data would bring; nothing where they hold neither.
[[nodiscard]] std::optional<Dropped> DroppedOf(const QMimeData& data);

}  // namespace walrim
