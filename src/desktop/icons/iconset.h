#pragma once

#include <QByteArray>
#include <QIcon>
#include <string>
#include <string_view>
#include <vector>

#include "platform/widgets/imagelist.h"

class QPalette;

// The pictures of this product: line drawings on a grid of 24 x 24, each kept once, as SVG, and coloured for a light or
// a dark background when it is asked for.
//
// Their keys are those of the tool bar ("Create", "Find", ...), of the tree and the programs ("BUSINESSFUNC", "COBOL",
// ...), of the host's own commands ("Open", "Scan", ...) and of the verdicts of a validation ("VerdictMoved", ...);
// "App" is the product's own sign, which has its own colours.
//
// To add a picture: svg/KEY.svg, in the colours that svg/README tells, and its line in icons.qrc.
namespace qmrules::desktop {

// A QIcon that draws the SVG sharp at any size and screen scale, paler where it is disabled, and to be seen on a
// selected row.
QIcon SvgIcon(const QByteArray& svg);

class IconSet {
 public:
  enum class Background { Light, Dark };

  explicit IconSet(Background background) : background_(background) {}
  // For what the palette's windows look like.
  explicit IconSet(const QPalette& palette);

  // The key of every picture, in the order of the alphabet.
  static std::vector<std::string> Keys();

  // Keys compare without regard to case, as in an ImageList. An empty icon, or nothing, for a key without a picture.
  QIcon Icon(std::string_view key) const;
  QByteArray Svg(std::string_view key) const;

  // Puts a picture under each of the product's keys that the list lacks, and renews those that a set put there earlier
  // for another background. Pictures that come from a file of the workspace stay.
  void Fill(platform::widgets::ImageList& list) const;

 private:
  Background background_;
};

}  // namespace qmrules::desktop
