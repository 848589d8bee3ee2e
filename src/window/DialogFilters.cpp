#include "window/DialogFilters.h"

namespace walrim {

QStringList NameFilters(const QString& filter) {
  const QStringList pieces = filter.split('|');
  QStringList filters;
  for (qsizetype i = 0; i + 1 < pieces.size(); i += 2) {
    const QString name = pieces[i].left(pieces[i].indexOf('(')).trimmed();
    const QString patterns = pieces[i + 1] == "*.*" ? QString("*") : QString(pieces[i + 1]).replace(';', ' ');
    filters.append(name + " (" + patterns + ")");
  }
  return filters;
}

QString DefaultSuffix(const QString& filter) {
  const QStringList pieces = filter.split('|', Qt::SkipEmptyParts);
  if (pieces.isEmpty() || !pieces.last().startsWith("*.") || pieces.last() == "*.*") return {};
  return pieces.last().mid(2);
}

}  // namespace walrim
