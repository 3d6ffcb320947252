// CUGCell: the properties of one grid cell.
//
// Every property has a bit in the set-properties mask; a property whose bit
// is clear is not set and reads as its default, so a cell can be laid over
// another: "add" takes only what the source has set, "copy" takes the
// source's mask as well.
#ifndef VYR_GRID_CUGCELL_H
#define VYR_GRID_CUGCELL_H

#include <QByteArray>
#include <QColor>
#include <QFont>
#include <QImage>
#include <QString>

#include <cstdint>
#include <memory>
#include <optional>

namespace vyr {

class CUGCell
{
public:
    CUGCell() = default;
    ~CUGCell() = default;
    // A copy shares the rare properties' block only when it has such
    // properties: copying a cell of text alone touches nothing but its
    // text.
    CUGCell(const CUGCell &other);
    CUGCell &operator=(const CUGCell &other);
    CUGCell(CUGCell &&other) noexcept = default;
    CUGCell &operator=(CUGCell &&other) noexcept = default;

    enum Property : std::uint32_t {
        Text = 0x1,
        Mask = 0x2,
        Label = 0x4,
        DataType = 0x8,
        UserValue = 0x10,
        CellType = 0x20,
        CellTypeParam = 0x40,
        TextColor = 0x80,
        BackColor = 0x100,
        HighlightTextColor = 0x200,
        HighlightBackColor = 0x400,
        BorderStyle = 0x800,
        BorderColor = 0x1000,
        Font = 0x2000,
        Bitmap = 0x4000,
        Alignment = 0x8000,
        ExtraData = 0x10000,
        Join = 0x20000,
        ReadOnly = 0x1000000,
        Decimals = 0x2000000,
        // Free for a derived grid's own property.
        DerivedProperty = 0x4000000,
    };
    enum DataTypes : std::int16_t { TextData = 1, NumberData = 2 };
    enum AlignmentBits : std::int16_t { AlignRight = 2, AlignCenter = 4, AlignBottom = 16, AlignVCenter = 32 };

    struct JoinBlock
    {
        int startColumn;
        long startRow;
        int endColumn;
        long endRow;
    };

    std::uint32_t propertyMask() const { return m_mask; }
    bool isSet(Property property) const { return (m_mask & property) != 0; }
    // Marks a property set or not set, keeping its stored value in this
    // cell; a copy of the cell takes only the values marked set.
    void setPropertyFlag(std::uint32_t property, bool set);

    // Adds the properties the source has set; the source's mask joins ours.
    void addInfoFrom(const CUGCell &source)
    {
        // The common stored cell: a text, maybe with its data type.
        if ((source.m_mask & ~std::uint32_t(Text | DataType)) == 0) {
            addTextFrom(source);
            return;
        }
        addAllFrom(source);
    }
    // Takes the source's mask, then adds. A cell left without rare
    // properties lets go of their block.
    void copyInfoFrom(const CUGCell &source);
    // Nothing set; text and label empty; user value, cell type and its
    // parameter -1; no extra data.
    void clearAll()
    {
        m_mask = 0;
        if (!m_text.isNull())
            m_text.clear();
        if (m_rare)
            clearRare();
        m_userValue = -1;
        m_cellType = -1;
        m_cellTypeParam = -1;
    }

    QString text() const { return isSet(Text) ? m_text : QString(); }
    // The stored text without a copy; empty when not set.
    const QString &textRef() const;
    void setText(const QString &text);
    void setText(QString &&text);
    // Moves the text out; the cell is left without text.
    QString takeText();
    QString mask() const { return isSet(Mask) ? rare().maskText : QString(); }
    void setMask(const QString &mask);
    QString label() const { return isSet(Label) ? rare().label : QString(); }
    void setLabel(const QString &label);
    std::int16_t dataType() const { return isSet(DataType) ? m_dataType : std::int16_t(TextData); }
    void setDataType(std::int16_t type);
    std::intptr_t userValue() const { return isSet(UserValue) ? m_userValue : 0; }
    void setUserValue(std::intptr_t value);
    int cellType() const { return isSet(CellType) ? m_cellType : 0; }
    void setCellType(int index);
    int cellTypeParam() const { return isSet(CellTypeParam) ? m_cellTypeParam : 0; }
    void setCellTypeParam(int parameter);
    // Colours: an invalid QColor when not set (the palette decides).
    QColor textColor() const { return isSet(TextColor) ? rare().textColor : QColor(); }
    void setTextColor(const QColor &color);
    QColor backColor() const { return isSet(BackColor) ? rare().backColor : QColor(); }
    void setBackColor(const QColor &color);
    QColor highlightTextColor() const { return isSet(HighlightTextColor) ? rare().highlightText : QColor(); }
    void setHighlightTextColor(const QColor &color);
    QColor highlightBackColor() const { return isSet(HighlightBackColor) ? rare().highlightBack : QColor(); }
    void setHighlightBackColor(const QColor &color);
    std::int16_t borderStyle() const { return isSet(BorderStyle) ? rare().borderStyle : std::int16_t(0); }
    void setBorderStyle(std::int16_t style);
    QColor borderColor() const { return isSet(BorderColor) ? rare().borderColor : QColor(); }
    void setBorderColor(const QColor &color);
    std::optional<QFont> font() const { return isSet(Font) ? rare().font : std::nullopt; }
    void setFont(const QFont &font);
    QImage bitmap() const { return isSet(Bitmap) ? rare().bitmap : QImage(); }
    void setBitmap(const QImage &bitmap);
    std::int16_t alignment() const { return isSet(Alignment) ? m_alignment : std::int16_t(0); }
    void setAlignment(std::int16_t alignment);
    QByteArray extraData() const { return isSet(ExtraData) ? rare().extraData : QByteArray(); }
    void setExtraData(const QByteArray &data);
    std::optional<JoinBlock> join() const { return isSet(Join) ? std::optional<JoinBlock>(rare().join) : std::nullopt; }
    void setJoin(const JoinBlock &block);
    bool isReadOnly() const { return isSet(ReadOnly) && m_readOnly; }
    void setReadOnly(bool readOnly);
    // -1 when not set: the number of decimals follows the value.
    int decimals() const { return isSet(Decimals) ? m_decimals : -1; }
    void setDecimals(int decimals);

    // The number as text in the user's locale (the set decimals, else as
    // many as the value needs), data type 2.
    void setNumber(double value);
    // The text read as a number (in the user's locale or with "."); 0
    // without text.
    double number() const;

private:
    // Properties most cells never set live apart, made on first use, so
    // that the common cell - text and a few numbers - is small and cheap to
    // copy, clear and lay over another. Cells share the block until one of
    // them changes it: a column's colours laid over thousands of cells are
    // kept once.
    struct Rare
    {
        QString maskText;
        QString label;
        QColor textColor;
        QColor backColor;
        QColor highlightText;
        QColor highlightBack;
        std::int16_t borderStyle = 0;
        QColor borderColor;
        std::optional<QFont> font;
        QImage bitmap;
        QByteArray extraData;
        JoinBlock join{};
    };
    static constexpr std::uint32_t kRareProperties = Mask | Label | TextColor | BackColor | HighlightTextColor
        | HighlightBackColor | BorderStyle | BorderColor | Font | Bitmap | ExtraData | Join;

    const Rare &rare() const;
    Rare &rareForWriting();
    void addRareFrom(const std::shared_ptr<Rare> &source, std::uint32_t set);
    void addAllFrom(const CUGCell &source);
    void clearRare();
    void addTextFrom(const CUGCell &source)
    {
        if (source.m_mask & Text)
            m_text = source.m_text;
        if (source.m_mask & DataType)
            m_dataType = source.m_dataType;
        m_mask |= source.m_mask;
    }

    template <class Field, class Value>
    void store(Field &field, const Value &value, Property property)
    {
        field = value;
        m_mask |= property;
    }

    std::uint32_t m_mask = 0;
    std::int16_t m_dataType = TextData;
    std::int16_t m_alignment = 0;
    bool m_readOnly = false;
    int m_cellType = 0;
    int m_cellTypeParam = 0;
    int m_decimals = -1;
    std::intptr_t m_userValue = 0;
    QString m_text;
    std::shared_ptr<Rare> m_rare;
};

} // namespace vyr

#endif // VYR_GRID_CUGCELL_H
