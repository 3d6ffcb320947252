// CFormatAttrGrid: the format's own attributes a feature type may expose,
// one row each, sorted by name: a check box (exposed or not), the name
// (read-only), and for a list attribute ("name{}") how many of its elements
// are exposed (two digits are typed; a schema that exposes more shows them
// all). A list attribute is checked exactly when it exposes elements:
// checking it exposes one at least, clearing it none, and its count checks
// or clears it.
#ifndef VYR_FTPROPSDLG_CFORMATATTRGRID_H
#define VYR_FTPROPSDLG_CFORMATATTRGRID_H

#include "ftprops/ftpropsformatinfo.h"
#include "ftprops/ftpropsschemainfo.h"
#include "uikit/cvvyrgrid.h"

#include <optional>
#include <string>
#include <vector>

namespace vyr {

class CFormatAttrGrid : public CVVyrGrid
{
    Q_OBJECT

public:
    static constexpr int kExposedColumn = 0;
    static constexpr int kNameColumn = 1;
    static constexpr int kCountColumn = 2;

    CFormatAttrGrid(FTPropsSchemaInfo *schema, const FTPropsFormatInfo *format, QWidget *parent = nullptr);

    // Fills the rows anew from the format's attributes and what the schema
    // record exposes.
    void Fill();
    void SetFormat(const FTPropsFormatInfo *format) { m_format = format; }
    // Checks (or clears) every row, as one step of the history.
    void CheckAll(bool checked);
    // Shows a row as checked or not with `count` elements.
    void SetRow(long row, bool checked, int count);

    // A row as read back: nothing for a row of other than three texts.
    struct Row
    {
        bool checked = false;
        std::string name;
        int count = 0;
    };
    std::optional<Row> ReadRow(long row);
    // The names of the checked rows, in row order.
    StringList GetExposedNames();

protected:
    void OnGridInit() override;
    void OnCellChange(int column, long row, ug::TextSource source) override;
    void OnLayoutComponents(Layout &layout) override;
    QString LoadedText(std::size_t record, int column) override;
    bool IsLoadedCellEnabled(std::size_t record, int column) override;
    void MakeLoadedRow(long row, std::size_t record) override;

private:
    FTPropsSchemaInfo *m_schema;
    const FTPropsFormatInfo *m_format;
    // The rows Fill loaded, each made when shown or touched.
    std::vector<Row> m_loaded;
};

} // namespace vyr

#endif // VYR_FTPROPSDLG_CFORMATATTRGRID_H
