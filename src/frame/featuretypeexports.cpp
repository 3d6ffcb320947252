// The feature type properties exports: the records around the caller's
// feature and capability strings, the dialog over them, and its result.
#include "vyrguimfc/vyrguimfc.h"

#include "ftprops/vyrobjftpropsformatinfo.h"
#include "ftprops/vyrobjftpropsschemainfo.h"
#include "ftprops/vyrobjworkspaceschemainfo.h"
#include "ftpropsdlg/cfeattypepropsdlg.h"
#include "uikit/application.h"
#include "uikit/parentwindow.h"
#include "uikit/resourcelibrary.h"
#include "util/installdir.h"

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace {

using namespace vyr;

// The library's dialogs take their texts and templates from the library of
// the installation directory. Without one no dialog can open; the result
// can only say false, so the reason goes to standard error for the host's
// user, who would otherwise take it for a cancelled dialog.
bool selectResources()
{
    if (loadResourceLibrary(std::string()))
        return true;
    std::fprintf(stderr,
                 "vyrguimfc: no resource library could be loaded from %sres/ (vyr_res.rcc or a translated one); "
                 "the feature type properties dialog cannot open\n",
                 getInstallDirectory().c_str());
    return false;
}

// Everything a dialog needs from the host's side before the records are
// made: the application's thread, the texts, and an owner that is one.
bool readyToShow(void *parentWindow, QWidget **owner)
{
    return ensureApplication() && ownerFromHost(parentWindow, owner) && selectResources();
}

int runDialog(IVYRSession *session, FTPropsSchemaInfo &schema, const SchemaRecordList &others,
              const FormatRecordList &formats, const FormatRecordList &additionalFormats, QWidget *owner)
{
    CFeatTypePropsDlg dialog(session, &schema, others, formats, additionalFormats, owner);
    return dialog.DoModal();
}

} // namespace

extern "C" {

bool VYRFeatTypeProperties(IVYRSession *session, IVYRFeature *schemaFeature, const char *formatCapabilities,
                           void *parentWindow)
{
    QWidget *owner = nullptr;
    if (!session || !schemaFeature || !readyToShow(parentWindow, &owner))
        return false;
    try {
        const std::string capabilities(formatCapabilities ? formatCapabilities : "");
        VYRObjFTPropsFormatInfo format(capabilities, session);
        FormatRecordList otherFormats;
        otherFormats.reserve(16);
        SchemaRecordList otherSchemas;
        otherSchemas.reserve(16);
        FormatRecordList formats;
        formats.reserve(16);
        formats.insert(formats.begin(), &format);
        VYRObjFTPropsSchemaInfo schema(*session, *schemaFeature, format);
        const int endCode = runDialog(session, schema, otherSchemas, formats, otherFormats, owner);
        return endCode == kEndOk;
    } catch (...) {
        return false;
    }
}

bool VYRFeatTypePropertiesInWorkspace(IVYRSession *session, IVYRFeature *schemaFeature, const char *formatCapabilities,
                                      const VYRWorkspaceFeatureType *others, size_t otherCount,
                                      const char *const *schemaSourceFormats, size_t schemaSourceCount,
                                      void *parentWindow)
{
    QWidget *owner = nullptr;
    if (!session || !schemaFeature || !readyToShow(parentWindow, &owner))
        return false;
    try {
        // Each format of the workspace is told apart by its name, so that a
        // feature type can move between them. Feature types of one format
        // share its capability string, which may be megabytes: each string
        // is read once, into one record that serves them all.
        std::vector<std::unique_ptr<VYRObjFTPropsFormatInfo>> formatRecords;
        std::unordered_map<std::string_view, const VYRObjFTPropsFormatInfo *> recordOf;
        const auto makeFormat = [&](const char *capabilities) {
            const std::string_view text(capabilities ? capabilities : "");
            const auto [known, added] = recordOf.try_emplace(text, nullptr);
            if (added) {
                formatRecords.push_back(VYRObjFTPropsFormatInfo::namedByFormat(text, session));
                known->second = formatRecords.back().get();
            }
            return known->second;
        };
        const VYRObjFTPropsFormatInfo *format = makeFormat(formatCapabilities);
        FormatRecordList formats{format};
        const auto formatWithId = [&](const std::string &id) -> const FTPropsFormatInfo * {
            for (const FTPropsFormatInfo *known : formats) {
                if (known->getId() == id)
                    return known;
            }
            return nullptr;
        };

        const VYRObjWorkspaceSchemaInfo::FormatLookup lookup = formatWithId;
        std::vector<std::unique_ptr<VYRObjWorkspaceSchemaInfo>> otherRecords;
        SchemaRecordList otherSchemas;
        std::vector<const FTPropsFormatInfo *> otherFormatOf;
        for (size_t i = 0; others && i < otherCount; ++i) {
            const VYRObjFTPropsFormatInfo *candidate = makeFormat(others[i].formatCapabilities);
            const FTPropsFormatInfo *otherFormat = formatWithId(candidate->getId());
            if (!otherFormat) {
                formats.push_back(candidate);
                otherFormat = candidate;
            }
            otherFormatOf.push_back(otherFormat);
        }
        for (size_t i = 0; others && i < otherCount; ++i) {
            if (!others[i].schemaFeature)
                continue;
            otherRecords.push_back(std::make_unique<VYRObjWorkspaceSchemaInfo>(*session, *others[i].schemaFeature,
                                                                               *otherFormatOf[i], lookup));
            otherSchemas.push_back(otherRecords.back().get());
        }
        FormatRecordList additionalFormats;
        for (size_t i = 0; schemaSourceFormats && i < schemaSourceCount; ++i)
            additionalFormats.push_back(makeFormat(schemaSourceFormats[i]));

        VYRObjWorkspaceSchemaInfo schema(*session, *schemaFeature, *format, lookup);
        return runDialog(session, schema, otherSchemas, formats, additionalFormats, owner) == kEndOk;
    } catch (...) {
        return false;
    }
}

} // extern "C"
