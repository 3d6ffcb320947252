#include "attrtypesdlg/argumenteditor.h"

#include "attrtypesdlg/ccodeddomaindlg.h"
#include "attrtypesdlg/crangedomaindlg.h"
#include "uikit/cgrideditdlg.h"
#include "uikit/narrowtext.h"
#include "util/resourceids.h"
#include "uikit/resourcelibrary.h"

namespace vyr {

namespace {

struct ListEditorTexts
{
    int columns;
    unsigned title;
    unsigned label;
    // 0: no second label.
    unsigned note;
    // 0: values may repeat.
    unsigned repeated;
};

ListEditorTexts textsOf(ArgumentEditor::Kind kind)
{
    switch (kind) {
    case ArgumentEditor::Kind::StringSet:
        return {1, res::StringSetTitle, res::StringSetLabel, res::GridEditIncompleteNote,
                res::StringSetValueRepeated};
    case ArgumentEditor::Kind::StringList:
        return {1, res::StringListTitle, res::StringListLabel, 0, 0};
    default:
        return {2, res::StringMapTitle, res::StringMapLabel, res::GridEditIncompleteNote, 0};
    }
}

bool isDomain(ArgumentEditor::Kind kind)
{
    return kind == ArgumentEditor::Kind::RangeDomain || kind == ArgumentEditor::Kind::CodedDomain;
}

} // namespace

ArgumentEditor::ArgumentEditor(Kind kind, std::string_view packed, const DataTypeMappings *registry, bool editable,
                               QWidget *parent)
    : m_kind(kind)
    , m_packed(packed)
    , m_elements(csvSplit(packed, ':'))
{
    const StringList &elements = m_elements;
    if (kind == Kind::RangeDomain) {
        m_dialog = std::make_unique<CRangeDomainDlg>(elements, registry, editable, parent);
    } else if (kind == Kind::CodedDomain) {
        m_dialog = std::make_unique<CCodedDomainDlg>(elements, registry, editable, parent);
    } else {
        const ListEditorTexts texts = textsOf(kind);
        auto dialog = std::make_unique<CGridEditDlg>(texts.columns, loadResourceString(texts.title),
                                                     loadResourceString(texts.label), fromNarrowList(elements),
                                                     editable, QStringList(),
                                                     texts.note ? loadResourceString(texts.note) : QString(),
                                                     std::string(), parent);
        dialog->setUniqueValues(texts.repeated);
        m_dialog = std::move(dialog);
    }
}

ArgumentEditor::~ArgumentEditor() = default;

std::string ArgumentEditor::packedResult() const
{
    StringList elements;
    if (isDomain(m_kind)) {
        elements = static_cast<const CDomainDlg &>(*m_dialog).domainList();
    } else {
        for (const QString &text : static_cast<const CGridEditDlg &>(*m_dialog).result())
            elements.push_back(toNarrow(text));
    }
    return elements == m_elements ? m_packed : csvJoin(elements, ':');
}

std::optional<std::string> ArgumentEditor::run()
{
    if (m_dialog->DoModal() != kEndOk)
        return std::nullopt;
    return packedResult();
}

} // namespace vyr
