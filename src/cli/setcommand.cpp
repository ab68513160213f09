#include <fmt/format.h>

#include <CLI/App.hpp>
#include <utility>
#include <variant>

#include "catalogue/gateway.h"
#include "cli/cli.h"
#include "cli/commandlist.h"
#include "cli/controlsession.h"
#include "cli/displaywidth.h"
#include "cli/objectfinder.h"
#include "cli/output.h"
#include "cli/workspacecommand.h"
#include "editing/rules.h"
#include "platform/error.h"
#include "shell/casefold.h"

namespace qmrules::cli {

namespace {

constexpr int kNothingToChange = 605;

struct Assignment {
  std::string attribute;  // name or caption, in any case
  std::string value;
};

Assignment ParseAssignment(const std::string& text) {
  const std::size_t sign = text.find('=');
  if (sign == std::string::npos || sign == 0) {
    throw UsageError(fmt::format("\"{}\" sets nothing: write ATTRIBUTE=VALUE, as \"AssignedTo=miller\".", text));
  }
  return {text.substr(0, sign), text.substr(sign + 1)};
}

class SetCommand final : public WorkspaceCommand {
 public:
  CommandTitle Title() const override { return {"set", "Change attributes of a function, a rule set or a rule"}; }
  std::vector<std::string> Examples() const override {
    return {"set RULE#12 \"AssignedTo=miller\" \"Business Description=Payment within 30 days\"",
            "set Billing/Lapse \"Name=Lapse and dunning\""};
  }
  void Declare(CLI::App& app) override {
    app.add_option("KEY", key_, kKeyHelp)->type_name("")->required();
    app.add_option("ATTRIBUTE=VALUE", assignments_,
                   "New values, all or none of which are taken; an attribute is named by its name or caption")
        ->type_name("")
        ->required();
    app.add_flag("--json", json_, kJsonHelp);
  }

 protected:
  int RunIn(Context& context, workbench::EmbeddedHost& host) override {
    std::vector<Assignment> assignments;
    for (const auto& text : assignments_) assignments.push_back(ParseAssignment(text));

    const ControlSession session(context, host);
    const ObjectFinder finder(host);
    const auto object = finder.Find(key_);
    finder.RequireInProject(object);
    Json changed = Json::object();
    Write(host, [&] {
      for (const auto& assignment : assignments) {
        const std::string attribute = NameOf(host, session, object, assignment.attribute);
        const auto outcome = Change(session, object, {attribute, assignment.value});
        if (const auto* refused = std::get_if<editing::Refused>(&outcome)) {
          throw platform::Error(fmt::format("{}: {}", assignment.attribute, refused->notice.text));
        }
        if (const auto* done = std::get_if<editing::Changed>(&outcome)) changed[attribute] = done->value;
      }
    });
    Tell(context, object, changed);
    return kDone;
  }

 private:
  static editing::ChangeOutcome Change(const ControlSession& session, const FoundObject& object,
                                       const editing::NewValue& wanted) {
    if (object.entity != catalogue::kRule) return editing::SetObjectAttribute(session.Editing(), object.Key(), wanted);
    const auto& control = session.Control();
    return editing::SetRuleAttribute(session.Editing(), {control.SchemaDocument(), control.EditableAttributes()},
                                     object.id, wanted);
  }

  // The attribute's name: an editable one by name or caption, or any other by name. The text itself when it names none.
  static std::string NameOf(workbench::EmbeddedHost& host, const ControlSession& session, const FoundObject& object,
                            const std::string& text) {
    const auto& definition = host.Repository().Schema().Entity(object.entity);
    const auto& editable = session.Control().EditableAttributes();
    const auto isEditable = [&](const platform::AttrDef& attribute) {
      return object.entity != catalogue::kRule || editable.Contains(attribute.Name());
    };
    for (const auto* attribute : definition.Attrs()) {
      if (isEditable(*attribute) && shell::EqualIgnoringCase(attribute->Name(), text)) return attribute->Name();
    }
    for (const auto* attribute : definition.Attrs()) {
      if (isEditable(*attribute) && shell::EqualIgnoringCase(attribute->Caption(), text)) return attribute->Name();
    }
    const auto* other = definition.FindAttr(text);
    return other == nullptr ? text : other->Name();
  }

  void Tell(Context& context, const FoundObject& object, const Json& changed) const {
    if (json_) {
      PrintJson(context, {{"key", object.Key()}, {"changed", changed}});
      return;
    }
    if (changed.empty()) context.environment.out << context.texts.Text(kNothingToChange) << '\n';
    for (const auto& [attribute, value] : changed.items()) {
      context.environment.out << fmt::format("{} {} = {}\n", object.Key(), attribute,
                                             OneLine(value.get_ref<const std::string&>()));
    }
  }

  std::string key_;
  std::vector<std::string> assignments_;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> MakeSetCommand() {
  return std::make_unique<SetCommand>();
}

}  // namespace qmrules::cli
