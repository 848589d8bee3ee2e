#include "window/DropTarget.h"

#include <QMimeData>
#include <QUrl>

namespace walrim {

std::optional<Dropped> DroppedOf(const QMimeData& data) {
  Dropped dropped;
  for (const QUrl& url : data.urls()) {
    if (url.isLocalFile() && url.host().isEmpty()) {
      dropped.files.append(url.toLocalFile());
    } else if (dropped.text.isEmpty()) {
      dropped.text = url.toString(QUrl::FullyEncoded);
    }
  }
  if (dropped.files.isEmpty() && dropped.text.isEmpty()) dropped.text = data.text();
  if (dropped.files.isEmpty() && dropped.text.trimmed().isEmpty()) return std::nullopt;
  return dropped;
}

}  // namespace walrim
