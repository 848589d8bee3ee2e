// What a drop on the window brings.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

class QMimeData;

namespace walrim {

/// Files from a file manager, or a text, which may be a link.
struct Dropped {
  QStringList files;
  QString text;
};

/// What dragged data would bring; nothing where they hold neither.
[[nodiscard]] std::optional<Dropped> DroppedOf(const QMimeData& data);

}  // namespace walrim
