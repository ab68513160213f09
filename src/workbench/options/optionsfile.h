#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/options.h"

namespace qmrules::workbench {

// The node that the path selects. Throws platform::Error, naming the file, the path and what to do, when the document
// lacks it.
platform::XmlElement RequireOption(const platform::XmlDocument& document, std::string_view path,
                                   std::string_view fileName);

// One options document, kept in an XML file that is read when it is first asked for.
class OptionsFile final : public platform::Options {
 public:
  // Lets the user change the options of the document that are under the path, which leads to a node of it. True when
  // the user accepted them; the document may be changed as it goes, since it is a copy.
  using Dialog = std::function<bool(platform::XmlDocument& document, std::string_view path)>;

  // Without a dialog, as in a run without a screen, the options are taken as they are stored.
  explicit OptionsFile(const std::string& path, Dialog dialog = nullptr);

  // Throws platform::Error, naming the file and what to do, when it is missing or holds no options document. The
  // reference stays good; elements that were taken from it are no part of it any more once a dialog was accepted.
  platform::XmlDocument& Document() override;

  // Throws platform::Error when the document lacks the path, and when the accepted options cannot be stored; the
  // document then is as before.
  bool DisplayDialog(std::string_view path) override;

  // Stores the document as it stands, whole or not at all.
  void Save();

  const std::string& Path() const { return path_; }

 private:
  std::string path_;
  Dialog dialog_;
  std::optional<platform::XmlDocument> document_;
};

}  // namespace qmrules::workbench
