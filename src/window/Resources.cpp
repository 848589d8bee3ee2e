#include "window/Resources.h"

#include <QtGlobal>

/// They have to be called in by name, outside any namespace.
static void CallIn() {
  Q_INIT_RESOURCE(walrim);
}

namespace walrim {

void CallInResources() {
  CallIn();
}

}  // namespace walrim
