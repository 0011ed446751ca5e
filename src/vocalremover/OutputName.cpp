#include "vocalremover/OutputName.h"

#include <algorithm>

namespace {

constexpr qsizetype endingLength = 3;
constexpr qsizetype endingWithDotLength = endingLength + 1;

}  // namespace

QString nameWithoutVocals(const QString& path)
{
    return path.chopped(std::min(endingWithDotLength, path.size())) + QStringLiteral("NoVocal.") +
           path.right(endingLength);
}
