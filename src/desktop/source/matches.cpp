#include "desktop/source/matches.h"

#include <QStringMatcher>
#include <algorithm>

namespace qmrules::desktop {

namespace {

bool IsWordCharacter(QChar character) {
  return character.isLetterOrNumber() || character.isMark() || QStringView(u"-_#@$").contains(character);
}

bool IsWholeWord(const QString& text, qsizetype begin, qsizetype end) {
  const bool joinedBefore = begin > 0 && IsWordCharacter(text[begin - 1]) && IsWordCharacter(text[begin]);
  const bool joinedBehind = end < text.size() && IsWordCharacter(text[end]) && IsWordCharacter(text[end - 1]);
  return !joinedBefore && !joinedBehind;
}

}  // namespace

std::vector<int> FindMatches(const QString& text, const QString& pattern, FindOptions options) {
  std::vector<int> places;
  if (pattern.isEmpty()) return places;
  const QStringMatcher matcher(pattern, options.matchCase ? Qt::CaseSensitive : Qt::CaseInsensitive);
  qsizetype at = matcher.indexIn(text);
  while (at >= 0) {
    const qsizetype end = at + pattern.size();
    const bool counts = !options.wholeWord || IsWholeWord(text, at, end);
    if (counts) places.push_back(static_cast<int>(at));
    at = matcher.indexIn(text, counts ? end : at + 1);
  }
  return places;
}

}  // namespace qmrules::desktop
