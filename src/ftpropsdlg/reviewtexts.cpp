#include "ftpropsdlg/reviewtexts.h"

#include "uikit/narrowtext.h"
#include "uikit/resourcelibrary.h"

#include <QStringList>

namespace vyr {

ReviewTexts ReviewTextsFromResources()
{
    ReviewTexts texts;
    // Without a library (a program run outside an installation) every text
    // would be empty.
    if (!loadResourceLibrary())
        return texts;
    texts.noChanges = loadNarrowResourceString(res::ReviewNoChanges);
    texts.groupGeneral = loadNarrowResourceString(res::ReviewGroupGeneral);
    texts.groupUserAttributes = loadNarrowResourceString(res::ReviewGroupUserAttributes);
    texts.groupFormatAttributes = loadNarrowResourceString(res::ReviewGroupFormatAttributes);
    texts.groupParameters = loadNarrowResourceString(res::ReviewGroupParameters);
    // One text a line; a library that lacks some keeps the built-in ones.
    const auto readLines = [](unsigned id, std::vector<std::string> &lines) {
        const QStringList read = loadResourceString(id).split(QLatin1Char('\n'));
        if (read.size() != static_cast<qsizetype>(lines.size()))
            return;
        for (qsizetype i = 0; i < read.size(); ++i)
            lines[std::size_t(i)] = toNarrow(read[i]);
    };
    readLines(res::ReviewGeneralLabels, texts.generalLabels);
    // The merge kinds and the default dynamic settings in the words of the
    // General page.
    texts.mergeKinds.clear();
    for (const unsigned kind : kMergeKindLabels)
        texts.mergeKinds.push_back(loadNarrowResourceString(kind));
    texts.dynamicDefault = loadNarrowResourceString(res::DynamicSettingsDefault);
    readLines(res::ReviewDynamicNames, texts.dynamicNames);
    readLines(res::ReviewDynamicGeometry, texts.dynamicGeometry);
    readLines(res::ReviewDynamicAttributes, texts.dynamicAttributes);
    texts.dynamicOther = loadNarrowResourceString(res::ReviewDynamicOther);
    texts.yes = loadNarrowResourceString(res::ReviewYes);
    texts.no = loadNarrowResourceString(res::ReviewNo);
    texts.empty = loadNarrowResourceString(res::ReviewEmpty);
    texts.typed = loadNarrowResourceString(res::ReviewTyped);
    texts.changed = loadNarrowResourceString(res::ReviewChanged);
    texts.added = loadNarrowResourceString(res::ReviewAdded);
    texts.removed = loadNarrowResourceString(res::ReviewRemoved);
    texts.renamed = loadNarrowResourceString(res::ReviewRenamed);
    texts.retyped = loadNarrowResourceString(res::ReviewRetyped);
    texts.moved = loadNarrowResourceString(res::ReviewMoved);
    texts.legalised = loadNarrowResourceString(res::ReviewLegalised);
    texts.exposed = loadNarrowResourceString(res::ReviewExposed);
    texts.unexposed = loadNarrowResourceString(res::ReviewUnexposed);
    texts.listCount = loadNarrowResourceString(res::ReviewListCount);
    return texts;
}

} // namespace vyr
