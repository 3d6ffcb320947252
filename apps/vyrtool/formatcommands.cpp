// vyrtool format / type / name / schema: what a format author asks about a
// capability file - how the dialog will read it, which types and names it
// accepts, what a schema feature holds under it and how two differ.
#include "commands.h"
#include "toolarguments.h"

#include "attrtypes/datatypemappings.h"
#include "attrtypes/typestring.h"
#include "ftprops/geometrytypemappings.h"
#include "ftprops/namerules.h"
#include "ftprops/schemareview.h"
#include "ftprops/vyrobjftpropsformatinfo.h"
#include "ftprops/vyrobjftpropsschemainfo.h"
#include "ftprops/vyrobjworkspaceschemainfo.h"
#include "ftpropsdlg/reviewtexts.h"
#include "util/capabilityfile.h"
#include "util/stringconverter.h"

#include "uikit/dialogutils.h"

#include "stringobjects/vyrrwstringimp.h"
#include "vyr/vyr_featurefile.h"
#include "vyr/vyr_session.h"

#include <nlohmann/json.hpp>

#include <clocale>
#include <cstdio>
#include <memory>

using Json = nlohmann::ordered_json;
using namespace vyr;

namespace {

constexpr const char *kUsage = "usage:\n"
                               "  vyrtool format show CAPFILE\n"
                               "  vyrtool type parse TEXT [--list-mode 0|1]\n"
                               "  vyrtool type generic|native TEXT --format CAPFILE\n"
                               "  vyrtool type convert TEXT --from CAPFILE --to CAPFILE\n"
                               "  vyrtool name resolve|attr NAME --format CAPFILE [--taken NAME]...  (exit 1: no legal name)\n"
                               "  vyrtool schema show FEATURE.json --format CAPFILE\n"
                               "  vyrtool schema diff OLD.json NEW.json --format CAPFILE [--json]  (exit 1: they differ)\n";

int usage(const char *command, const std::string &message)
{
    std::fprintf(stderr, "vyrtool %s: %s\n%s", command, message.c_str(), kUsage);
    return 2;
}

// A session for the questions that need the engine (database formats,
// validation scripts), ended when the command ends.
struct Session
{
    Session()
        : session(VYR_SessionCreate())
    {}
    ~Session() { VYR_SessionDestroy(session); }
    IVYRSession *session;
};

std::unique_ptr<VYRObjFTPropsFormatInfo> openFormat(const std::string &path, IVYRSession *session, const char *command)
{
    const auto capabilities = readCapabilities(path, command);
    if (!capabilities)
        return nullptr;
    auto format = std::make_unique<VYRObjFTPropsFormatInfo>(*capabilities, session);
    // Any text reads as some capability string; one that names no format is
    // not a capability file, and what it would answer means nothing.
    if (format->getFormatName().empty()) {
        std::fprintf(stderr, "vyrtool %s: %s is not a capability file: it names no FORMAT\n", command, path.c_str());
        return nullptr;
    }
    return format;
}

// The format named by --format; null (after saying why) when it is missing
// or unreadable.
std::unique_ptr<VYRObjFTPropsFormatInfo> formatOption(const ToolArguments &arguments, IVYRSession *session,
                                                      const char *command)
{
    const auto path = arguments.option("format");
    if (!path) {
        usage(command, "--format is missing");
        return nullptr;
    }
    return openFormat(*path, session, command);
}

Json text(const std::string &narrow)
{
    return ansiToUtf8(narrow);
}

Json texts(const StringList &narrow)
{
    Json list = Json::array();
    for (const std::string &entry : narrow)
        list.push_back(text(entry));
    return list;
}

// Capability and feature files may hold bytes that are not UTF-8; each
// such byte is shown as U+FFFD, so the output stays valid JSON.
void print(const Json &document)
{
    std::printf("%s\n", document.dump(2, ' ', false, Json::error_handler_t::replace).c_str());
}

int formatShow(const ToolArguments &arguments)
{
    if (arguments.words.size() != 2)
        return usage("format", "format show takes one capability file");
    Session session;
    const auto format = openFormat(arguments.words[1], session.session, "format");
    if (!format)
        return 2;
    Json parameters = Json::array();
    for (const std::string &name : format->getDeflineParmNames())
        parameters.push_back({{"name", text(name)},
                              {"line", text(format->getDeflineParm(name))},
                              {"default", text(format->getDeflineParmDefault(name))}});
    Json formatAttributes = Json::array();
    for (const std::string &name : format->getFormatAttrNames())
        formatAttributes.push_back({{"name", text(name)}, {"type", text(format->getFormatAttrType(name))}});
    Json dataTypes = Json::array();
    const DataTypeMappings &types = *format->getDataTypeMappings();
    for (std::size_t i = 0; i < types.pairCount(); ++i)
        dataTypes.push_back({{"native", text(formatType(types.nativeTemplate(i), kDialogListMode))},
                             {"generic", text(formatType(types.genericTemplate(i), kDialogListMode))},
                             {"selectable", types.nativeTemplate(i).isSelectable(1)}});
    Json geometries = Json::array();
    for (const auto &[native, generic] : format->getGeometryTypeMappings()->pairs())
        geometries.push_back({{"native", text(native)}, {"generic", text(generic)}});
    const auto fallback = types.defaultType();
    print({{"format_name", text(format->getFormatName())},
           {"is_source", format->isSource()},
           {"is_schema_reader", format->isSchemaReader()},
           {"is_database", format->isDatabase()},
           {"has_user_attributes", format->hasDeflineAttrs()},
           {"supports_feature_type_fanout", format->supportsFeatTypeFanout()},
           {"supports_multiple_geometries", format->supportsMultiGeom()},
           {"attribute_case", text(format->getAttrCase())},
           {"max_attribute_length", format->getMaxAttrLength()},
           {"attribute_name_invalid_chars", text(format->getAttrNameInvalidChars())},
           {"illegal_attribute_names", texts(format->getDestIllegalAttrList())},
           {"feature_type_case", text(format->getFeatureTypeCase())},
           {"feature_type_length", format->getFeatureTypeLength()},
           {"feature_type_length_includes_prefix", format->featureTypeLengthIncludesPrefix()},
           {"feature_type_invalid_chars", text(format->getFeatureTypeInvalidChars())},
           {"feature_type_reserved_words", texts(format->getFeatureTypeReservedWords())},
           {"allowed_feature_types", texts(format->getAllowedFeatTypes())},
           {"validation_script", text(format->getFeatTypeValidationScript())},
           {"parameters", parameters},
           {"format_attributes", formatAttributes},
           {"data_types", dataTypes},
           {"default_type", fallback ? text(formatType(*fallback, kDialogListMode)) : Json()},
           {"geometries", geometries}});
    return 0;
}

int typeCommand(const ToolArguments &arguments)
{
    if (arguments.words.size() != 2)
        return usage("type", "type takes a subcommand and one type string");
    const std::string &action = arguments.words[0];
    const std::string &typeText = arguments.words[1];
    if (action == "parse") {
        const int listMode = arguments.option("list-mode").value_or("1") == "0" ? kStoredListMode : kDialogListMode;
        if (const auto problem = typeTextProblem(typeText, listMode)) {
            std::fprintf(stderr, "vyrtool type: \"%s\" is not a type string: %s\n", typeText.c_str(),
                         problem->c_str());
            return 2;
        }
        const ParsedType parsed = parseType(typeText, listMode);
        print({{"name", text(parsed.name)}, {"values", texts(parsed.values)}, {"suffix", text(parsed.suffix)}});
        return 0;
    }
    std::unique_ptr<AttrType> result;
    if (action == "generic" || action == "native") {
        const auto format = formatOption(arguments, nullptr, "type");
        if (!format)
            return 2;
        const DataTypeMappings &types = *format->getDataTypeMappings();
        const auto type = types.createType(typeText, kDialogListMode);
        if (type)
            result = action == "generic" ? types.toGeneric(*type) : types.toNative(*type);
    } else if (action == "convert") {
        const auto from = arguments.option("from");
        const auto to = arguments.option("to");
        if (!from || !to)
            return usage("type", "convert needs --from and --to");
        const auto source = openFormat(*from, nullptr, "type");
        const auto target = openFormat(*to, nullptr, "type");
        if (!source || !target)
            return 2;
        const auto type = source->getDataTypeMappings()->createType(typeText, kDialogListMode);
        result
            = DataTypeMappings::convertType(*source->getDataTypeMappings(), type.get(), *target->getDataTypeMappings());
    } else {
        return usage("type", "unknown subcommand \"" + action + "\"");
    }
    if (!result) {
        std::fprintf(stderr, "vyrtool type: no %s type for \"%s\"\n", action.c_str(), typeText.c_str());
        return 1;
    }
    std::printf("%s\n", formatType(*result, kDialogListMode).c_str());
    return 0;
}

// Why the name rules gave no name. They give none when every name the
// format allows is taken, when nothing is left of the name once its
// characters are replaced, or when no number fits the length limit.
std::string whyNoName(const FTPropsFormatInfo &format, bool featureType, const StringSet &taken)
{
    if (featureType && !format.getAllowedFeatTypes().empty()) {
        std::string allowed;
        for (const std::string &name : format.getAllowedFeatTypes())
            allowed += (allowed.empty() ? "" : ", ") + name;
        return "every name the format allows is taken (" + allowed + ")";
    }
    const int limit = featureType ? format.getFeatureTypeLength() : format.getMaxAttrLength();
    if (limit > 0 && !taken.empty())
        return "the name is taken and the format's length limit of " + std::to_string(limit)
            + " leaves no room for a number";
    return "nothing is left of the name under the format's rules";
}

int nameCommand(const ToolArguments &arguments)
{
    if (arguments.words.size() != 2 || (arguments.words[0] != "resolve" && arguments.words[0] != "attr"))
        return usage("name", "name takes resolve or attr and one name");
    Session session;
    const auto format = formatOption(arguments, session.session, "name");
    if (!format)
        return 2;
    StringSet taken;
    for (const std::string &name : arguments.all("taken"))
        taken.insert(name);
    const std::string resolved = arguments.words[0] == "resolve"
        ? ResolveFeatureTypeName(*format, arguments.words[1], taken, session.session)
        : LegaliseAttributeName(*format, arguments.words[1], taken);
    if (resolved.empty()) {
        std::fprintf(stderr, "vyrtool name: no legal name for \"%s\": %s\n", arguments.words[1].c_str(),
                     whyNoName(*format, arguments.words[0] == "resolve", taken).c_str());
        return 1;
    }
    std::printf("%s\n", resolved.c_str());
    return 0;
}

// A schema feature file read into a feature of the session, given back with
// it.
class FeatureFile
{
public:
    explicit FeatureFile(IVYRSession &session)
        : m_session(session)
        , m_feature(session.createFeature())
    {}
    ~FeatureFile() { m_session.destroyFeature(m_feature); }
    FeatureFile(const FeatureFile &) = delete;
    FeatureFile &operator=(const FeatureFile &) = delete;

    IVYRFeature &feature() const { return *m_feature; }

    // Whether the file at `path` is a feature file; says why not on standard
    // error.
    bool load(const std::string &path, const char *command)
    {
        VYRRWStringImp error;
        if (VYR_FeatureLoadJson(m_feature, path.c_str(), &error))
            return true;
        std::fprintf(stderr, "vyrtool %s: %s\n", command, error.c_str());
        return false;
    }

private:
    IVYRSession &m_session;
    IVYRFeature *m_feature;
};

int schemaShow(const ToolArguments &arguments, Session &session, const FTPropsFormatInfo &format)
{
    FeatureFile file(*session.session);
    if (!file.load(arguments.words[1], "schema"))
        return 2;
    VYRObjFTPropsSchemaInfo schema(*session.session, file.feature(), format);
    Json attributes = Json::array();
    for (const std::string &name : schema.getAttributeNames(true, false))
        attributes.push_back({{"name", text(name)}, {"type", text(schema.getAttributeType(name))}});
    Json exposed = Json::array();
    for (const std::string &name : schema.getAttributeNames(false, true))
        exposed.push_back({{"name", text(name)}, {"type", text(schema.getAttributeType(name))}});
    Json parameters = Json::object();
    for (const std::string &name : format.getDeflineParmNames())
        parameters[ansiToUtf8(name)] = text(schema.getParameter(name));
    print({{"name", text(schema.getName())},
           {"geometry", text(schema.getGeometry())},
           {"user_attributes", attributes},
           {"format_attributes", exposed},
           {"parameters", parameters}});
    return 0;
}

// Exit 0 when the files hold the same schema, 1 when they differ.
int schemaDiff(const ToolArguments &arguments, Session &session, const FTPropsFormatInfo &format)
{
    FeatureFile oldFile(*session.session);
    FeatureFile newFile(*session.session);
    if (!oldFile.load(arguments.words[1], "schema") || !newFile.load(arguments.words[2], "schema"))
        return 2;
    // A feature type moved to another dataset reads in that format's words,
    // which the one --format cannot give: compared in these, it would seem
    // unchanged.
    for (const auto &[file, path] : {std::pair(&oldFile, arguments.words[1]), std::pair(&newFile, arguments.words[2])}) {
        VYRRWStringImp moved;
        if (file->feature().getAttribute("vyr_format", moved) && moved.c_str() != format.getFormatName()) {
            std::fprintf(stderr, "vyrtool schema: %s is in the dataset format %s, not %s given by --format\n",
                         path.c_str(), ansiToUtf8(moved.c_str()).c_str(), ansiToUtf8(format.getFormatName()).c_str());
            return 2;
        }
    }
    // Read as a workspace keeps its feature types, so that fan-out, merge,
    // dynamic schema and the dataset are compared too: the bare record
    // answers those with its defaults.
    const auto lookup = [&format](const std::string &id) { return id == format.getId() ? &format : nullptr; };
    const VYRObjWorkspaceSchemaInfo before(*session.session, oldFile.feature(), format, lookup);
    const VYRObjWorkspaceSchemaInfo after(*session.session, newFile.feature(), format, lookup);
    SchemaReviewInput input{before, after, format};
    // Prompts in the user's language, as the dialog shows them: the
    // message catalogs answer only under the user's locale for messages,
    // which a program without a window does not take up by itself.
    std::setlocale(LC_MESSAGES, "");
    input.localisePrompt = [](const std::string &prompt) { return LocalizeText(prompt); };
    // The words the dialog's review window uses, in the user's language.
    const ReviewTexts texts = ReviewTextsFromResources();
    input.texts = &texts;
    const std::vector<ReviewChange> changes = ReviewSchemaChanges(input);
    const std::string shown = arguments.hasFlag("json") ? ReviewAsJson(changes) + "\n" : ReviewAsText(changes, texts);
    std::fputs(shown.c_str(), stdout);
    return changes.empty() ? 0 : 1;
}

int schemaCommand(const ToolArguments &arguments)
{
    const bool show = !arguments.words.empty() && arguments.words[0] == "show";
    const bool diff = !arguments.words.empty() && arguments.words[0] == "diff";
    if (show && arguments.words.size() != 2)
        return usage("schema", "schema show takes one feature file");
    if (diff && arguments.words.size() != 3)
        return usage("schema", "schema diff takes two feature files");
    if (!show && !diff)
        return usage("schema", "schema takes show or diff");
    if (show && arguments.hasFlag("json"))
        return usage("schema", "--json is for schema diff");
    Session session;
    const auto format = formatOption(arguments, session.session, "schema");
    if (!format)
        return 2;
    return show ? schemaShow(arguments, session, *format) : schemaDiff(arguments, session, *format);
}

} // namespace

int runFormatCommand(std::string_view command, std::span<const std::string_view> arguments)
{
    // Only schema diff has a flag.
    const auto read = command == "schema"
        ? readToolArguments(arguments, {"format"}, "schema", {"json"})
        : readToolArguments(arguments, {"format", "from", "to", "taken", "list-mode"}, std::string(command).c_str());
    if (!read)
        return 2;
    if (command == "format") {
        if (read->words.empty() || read->words[0] != "show")
            return usage("format", "format takes show and a capability file");
        return formatShow(*read);
    }
    if (command == "type")
        return typeCommand(*read);
    if (command == "name")
        return nameCommand(*read);
    return schemaCommand(*read);
}

std::optional<std::string> readCapabilities(const std::string &path, const char *command)
{
    std::string error;
    std::optional<std::string> capabilities = readCapabilityFile(path, &error);
    if (!capabilities)
        std::fprintf(stderr, "vyrtool %s: cannot read the capability file %s\n", command, error.c_str());
    return capabilities;
}
