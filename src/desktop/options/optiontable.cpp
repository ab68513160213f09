#include "desktop/options/optiontable.h"

#include <QCoreApplication>

#include "desktop/options/optionchecks.h"

namespace qmrules::desktop {

namespace {

constexpr OptionPageSpec kUnassigned{QT_TRANSLATE_NOOP("Options", "Unassigned Rules"), "RULESET"};
constexpr OptionPageSpec kValidation{QT_TRANSLATE_NOOP("Options", "Rule Validation"), "Validate"};
constexpr OptionPageSpec kDetection{QT_TRANSLATE_NOOP("Options", "Detection"), "AutoDetect"};
constexpr OptionPageSpec kExport{QT_TRANSLATE_NOOP("Options", "Rule Export"), "ExpImp"};
constexpr OptionPageSpec kCobolSources{QT_TRANSLATE_NOOP("Options", "COBOL Sources"), "COBOL"};
constexpr OptionPageSpec kComponents{QT_TRANSLATE_NOOP("Options", "Components"), "Glossary"};

constexpr OptionChoice kSegmentActions[] = {
    {"leave", QT_TRANSLATE_NOOP("Options", "Mark it invalid, and leave the segment as it is")},
    {"delete", QT_TRANSLATE_NOOP("Options", "Take its segment away")},
    {"valid", QT_TRANSLATE_NOOP("Options", "Look for the text in the file, and move the segment there")},
};

constexpr OptionChoice kClosures[] = {
    {"none", QT_TRANSLATE_NOOP("Options", "Nothing else")},
    {"triggered",
     QT_TRANSLATE_NOOP("Options", "The rule sets that the rules trigger, with their rules, and so on from there")},
};

constexpr OptionChoice kSourceFormats[] = {
    {"auto", QT_TRANSLATE_NOOP("Options", "Told from each file")},
    {"fixed", QT_TRANSLATE_NOOP("Options", "Fixed: text in columns 8 to 72")},
    {"wide", QT_TRANSLATE_NOOP("Options", "Wide: text from column 8 to the end of the line")},
    {"free", QT_TRANSLATE_NOOP("Options", "Free: text anywhere on the line")},
};

constexpr OptionSpec kOptions[] = {
    {.page = &kUnassigned,
     .scope = OptionScope::Project,
     .kind = OptionKind::Text,
     .name = "UnassignedBFName",
     .path = "/OPTIONS/CASE[@NAME='Ferrowood']/LIST[@NAME='FW']/CASE[@NAME='CRD']/LIST[@NAME='CRDOptions']"
             "/CASE[@NAME='CRDConfig']/TEXT[@NAME='UnassignedBFName']",
     .attribute = "VALUE",
     .caption = QT_TRANSLATE_NOOP("Options", "Business function for rules without one"),
     .meaning = QT_TRANSLATE_NOOP("Options",
                                  "Rules that are made without a place of their own go to this function, which is made "
                                  "when it is first needed. A new name holds from the next start on; a function that "
                                  "stands under the old name stays as it is."),
     .check = CheckObjectName},
    {.page = &kUnassigned,
     .scope = OptionScope::Project,
     .kind = OptionKind::LongText,
     .name = "UnassignedBFDescr",
     .path = "/OPTIONS/CASE[@NAME='Ferrowood']/LIST[@NAME='FW']/CASE[@NAME='CRD']/LIST[@NAME='CRDOptions']"
             "/CASE[@NAME='CRDConfig']/TEXT[@NAME='UnassignedBFDescr']",
     .attribute = "VALUE",
     .caption = QT_TRANSLATE_NOOP("Options", "Description of this business function"),
     .meaning = QT_TRANSLATE_NOOP("Options", "The description that the function gets when it is made."),
     .check = CheckStoredText},
    {.page = &kUnassigned,
     .scope = OptionScope::Project,
     .kind = OptionKind::Text,
     .name = "UnassignedRSName",
     .path = "/OPTIONS/CASE[@NAME='Ferrowood']/LIST[@NAME='FW']/CASE[@NAME='CRD']/LIST[@NAME='CRDOptions']"
             "/CASE[@NAME='CRDConfig']/TEXT[@NAME='UnassignedRSName']",
     .attribute = "VALUE",
     .caption = QT_TRANSLATE_NOOP("Options", "Rule set for rules without one"),
     .meaning = QT_TRANSLATE_NOOP("Options",
                                  "The rule set below this function that takes such rules. A new name holds from the "
                                  "next start on."),
     .check = CheckObjectName},
    {.page = &kUnassigned,
     .scope = OptionScope::Project,
     .kind = OptionKind::LongText,
     .name = "UnassignedRSDescr",
     .path = "/OPTIONS/CASE[@NAME='Ferrowood']/LIST[@NAME='FW']/CASE[@NAME='CRD']/LIST[@NAME='CRDOptions']"
             "/CASE[@NAME='CRDConfig']/TEXT[@NAME='UnassignedRSDescr']",
     .attribute = "VALUE",
     .caption = QT_TRANSLATE_NOOP("Options", "Description of this rule set"),
     .meaning = QT_TRANSLATE_NOOP("Options", "The description that the rule set gets when it is made."),
     .check = CheckStoredText},
    {.page = &kValidation,
     .scope = OptionScope::Project,
     .kind = OptionKind::Choice,
     .name = "SegmentValidation",
     .path = "/OPTIONS/CASE[@NAME='Ferrowood']/LIST[@NAME='FW']/CASE[@NAME='CRD']/LIST[@NAME='CRDOptions']"
             "/CASE[@NAME='RuleValidation']/LIST[@NAME='SegmentValidation']",
     .attribute = "VALUE",
     .caption = QT_TRANSLATE_NOOP("Options", "A rule whose text no longer stands at its lines"),
     .meaning = QT_TRANSLATE_NOOP("Options", "What the validation does with it."),
     .choices = kSegmentActions},
    {.page = &kValidation,
     .scope = OptionScope::Project,
     .kind = OptionKind::Boolean,
     .name = "CollapseSpaces",
     .path = "//LIST[@NAME='FW']/CASE[@NAME='CRD']/LIST[@NAME='CRDOptions']/CASE[@NAME='RuleValidation']"
             "/BOOL[@NAME='CollapseSpaces']",
     .attribute = "VALUE",
     .caption = QT_TRANSLATE_NOOP("Options", "Take several blanks in a row for one"),
     .meaning = QT_TRANSLATE_NOOP("Options",
                                  "Lines that differ only in the number of blanks between their words then count as "
                                  "the same when a segment is looked for in its file.")},
    {.page = &kDetection,
     .scope = OptionScope::Project,
     .kind = OptionKind::Texts,
     .name = "BlackListTemplates",
     .path = "//LIST[@NAME='FW']/CASE[@NAME='CRD']/LIST[@NAME='CRDOptions']/CASE[@NAME='AutoDetect']"
             "/STRINGS[@NAME='BlackListTemplates']",
     .attribute = "VALUE",
     .caption = QT_TRANSLATE_NOOP("Options", "Names that detection leaves out"),
     .meaning = QT_TRANSLATE_NOOP("Options",
                                  "Data elements whose names match a ticked template are not detected. In a template * "
                                  "stands for any characters, ? for one, # for a digit, and [A-F] for one of those "
                                  "listed; case does not matter."),
     .check = CheckTemplates},
    {.page = &kDetection,
     .scope = OptionScope::Project,
     .kind = OptionKind::Boolean,
     .name = "const.move",
     .path =
         "//CASE[@ID='ImpactAnalysis']/GROUP[@NAME='Relationships']/LIST[@NAME='Internal']/CASE[@NAME='const.move']",
     .attribute = "CHECKED",
     .caption = QT_TRANSLATE_NOOP("Options", "Constants moved to a variable count in its dataflow"),
     .meaning = QT_TRANSLATE_NOOP("Options",
                                  "Where this is off, AutoDetect makes no rules of statements that do nothing but move "
                                  "a constant.")},
    {.page = &kExport,
     .scope = OptionScope::Project,
     .kind = OptionKind::Choice,
     .name = "ClosureOptions",
     .path = "//LIST[@NAME='FW']/CASE[@NAME='CRD']/LIST[@NAME='CRDOptions']/CASE[@NAME='RuleExport']"
             "/LIST[@NAME='ClosureOptions']",
     .attribute = "VALUE",
     .caption = QT_TRANSLATE_NOOP("Options", "What goes into the file with the chosen rules"),
     .meaning = QT_TRANSLATE_NOOP("Options", "How far an export follows the triggers of the rules."),
     .choices = kClosures},
    {.page = &kCobolSources,
     .scope = OptionScope::Project,
     .kind = OptionKind::Choice,
     .name = "SourceFormat",
     .path = "/OPTIONS/CASE[@NAME='Sources']/LIST[@NAME='Languages']/CASE[@NAME='COBOL']/LIST[@NAME='SourceFormat']",
     .attribute = "VALUE",
     .caption = QT_TRANSLATE_NOOP("Options", "Form of the source lines"),
     .meaning = QT_TRANSLATE_NOOP("Options", "Takes effect when the sources are scanned next."),
     .choices = kSourceFormats},
    {.page = &kCobolSources,
     .scope = OptionScope::Project,
     .kind = OptionKind::Texts,
     .name = "CopybookFolders",
     .path =
         "/OPTIONS/CASE[@NAME='Sources']/LIST[@NAME='Languages']/CASE[@NAME='COBOL']/STRINGS[@NAME='CopybookFolders']",
     .attribute = "VALUE",
     .caption = QT_TRANSLATE_NOOP("Options", "Folders of copybooks"),
     .meaning = QT_TRANSLATE_NOOP("Options",
                                  "Searched in this order, behind the program's own folder, and named relative to the "
                                  "workspace; a folder without a tick is passed over. With none, every folder that "
                                  "holds copybooks is searched. Takes effect when the sources are scanned next."),
     .check = CheckFolders},
    {.page = &kCobolSources,
     .scope = OptionScope::Folder,
     .kind = OptionKind::Encoding,
     .name = "sourceEncoding",
     .path = "/WORKSPACE/SOURCES",
     .attribute = "ENCODING",
     .caption = QT_TRANSLATE_NOOP("Options", "Encoding of the sources"),
     .meaning = QT_TRANSLATE_NOOP("Options",
                                  "How the bytes of the source files stand for characters, in all projects of the "
                                  "workspace: one of those listed, or the name of another one. Where this is wrong, "
                                  "letters and columns look wrong. What is on view is read again at once, the programs "
                                  "when the sources are scanned next."),
     .check = CheckEncoding},
    {.page = &kComponents,
     .scope = OptionScope::Workspace,
     .kind = OptionKind::Presence,
     .name = "QMGlossary",
     .path = "/OPTIONS/CASE[@NAME='Methods']/LIST[@NAME='Methods']/CASE[@NAME='Quillglass']/LIST[@NAME='Components']"
             "/CASE[@NAME='QMGlossary']",
     .attribute = "",
     .caption = QT_TRANSLATE_NOOP("Options", "Glossary of business names"),
     .meaning = QT_TRANSLATE_NOOP("Options",
                                  "Offers the commands that take business names of data elements from the glossary and "
                                  "put them there. Where this is off, the glossary's file stays as it is.")},
};

}  // namespace

std::span<const OptionSpec> OptionTable() {
  return kOptions;
}

QString OptionText(const char* text) {
  return QCoreApplication::translate("Options", text);
}

}  // namespace qmrules::desktop
