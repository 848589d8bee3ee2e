#include "window/DropTarget.h"

#include <QMimeData>
#include <QUrl>

namespace walrim {

std::optional<Dropped> DroppedOf(const QMimeData& data) {
  Dropped dropped;
  for (const QUrl& url : data.urls()) {
    if (url.isLocalFile() && url.host().isEmpty()) {
      dropped.files.append(url.toLocalFile());
    } else {
      dropped.texts.append(url.toString(QUrl::FullyEncoded));
    }
  }
  if (dropped.files.isEmpty() && dropped.texts.isEmpty() && !data.text().trimmed().isEmpty()) {
    dropped.texts.append(data.text());
  }
  if (dropped.files.isEmpty() && dropped.texts.isEmpty()) return std::nullopt;
  return dropped;
}

}  // namespace walrim
