#include "grid/cugcell.h"

#include <QLocale>

#include <cstdio>

namespace vyr {

namespace {

// The value's own decimals: "%.20f" without its trailing zeros.
int decimalsOf(double value)
{
    char text[512];
    std::snprintf(text, sizeof text, "%.20f", value);
    std::string digits(text);
    const std::size_t point = digits.find('.');
    if (point == std::string::npos)
        return 0;
    digits.erase(digits.find_last_not_of('0') + 1);
    return static_cast<int>(digits.size() - point - 1);
}

} // namespace

void CUGCell::setPropertyFlag(std::uint32_t property, bool set)
{
    m_mask = set ? (m_mask | property) : (m_mask & ~property);
}

void CUGCell::addInfoFrom(const CUGCell &source)
{
    const std::uint32_t set = source.m_mask;
    if (set & Text)
        m_text = source.m_text;
    if (set & Mask)
        m_maskText = source.m_maskText;
    if (set & Label)
        m_label = source.m_label;
    if (set & DataType)
        m_dataType = source.m_dataType;
    if (set & UserValue)
        m_userValue = source.m_userValue;
    if (set & CellType)
        m_cellType = source.m_cellType;
    if (set & CellTypeParam)
        m_cellTypeParam = source.m_cellTypeParam;
    if (set & TextColor)
        m_textColor = source.m_textColor;
    if (set & BackColor)
        m_backColor = source.m_backColor;
    if (set & HighlightTextColor)
        m_highlightText = source.m_highlightText;
    if (set & HighlightBackColor)
        m_highlightBack = source.m_highlightBack;
    if (set & BorderStyle)
        m_borderStyle = source.m_borderStyle;
    if (set & BorderColor)
        m_borderColor = source.m_borderColor;
    if (set & Font)
        m_font = source.m_font;
    if (set & Bitmap)
        m_bitmap = source.m_bitmap;
    if (set & Alignment)
        m_alignment = source.m_alignment;
    if (set & ExtraData)
        m_extraData = source.m_extraData;
    if (set & Join)
        m_join = source.m_join;
    if (set & ReadOnly)
        m_readOnly = source.m_readOnly;
    if (set & Decimals)
        m_decimals = source.m_decimals;
    m_mask |= set;
}

void CUGCell::copyInfoFrom(const CUGCell &source)
{
    m_mask = source.m_mask;
    addInfoFrom(source);
}

void CUGCell::clearAll()
{
    m_mask = 0;
    m_text.clear();
    m_label.clear();
    m_userValue = -1;
    m_cellType = -1;
    m_cellTypeParam = -1;
    m_extraData.clear();
}

void CUGCell::setText(const QString &text)
{
    m_text = text;
    m_mask |= Text;
}

void CUGCell::setMask(const QString &mask)
{
    m_maskText = mask;
    m_mask |= Mask;
}

void CUGCell::setLabel(const QString &label)
{
    m_label = label;
    m_mask |= Label;
}

void CUGCell::setDataType(std::int16_t type)
{
    m_dataType = type;
    m_mask |= DataType;
}

void CUGCell::setUserValue(std::intptr_t value)
{
    m_userValue = value;
    m_mask |= UserValue;
}

void CUGCell::setCellType(int index)
{
    m_cellType = index;
    m_mask |= CellType;
}

void CUGCell::setCellTypeParam(int parameter)
{
    m_cellTypeParam = parameter;
    m_mask |= CellTypeParam;
}

void CUGCell::setTextColor(const QColor &color)
{
    m_textColor = color;
    m_mask |= TextColor;
}

void CUGCell::setBackColor(const QColor &color)
{
    m_backColor = color;
    m_mask |= BackColor;
}

void CUGCell::setHighlightTextColor(const QColor &color)
{
    m_highlightText = color;
    m_mask |= HighlightTextColor;
}

void CUGCell::setHighlightBackColor(const QColor &color)
{
    m_highlightBack = color;
    m_mask |= HighlightBackColor;
}

void CUGCell::setBorderStyle(std::int16_t style)
{
    m_borderStyle = style;
    m_mask |= BorderStyle;
}

void CUGCell::setBorderColor(const QColor &color)
{
    m_borderColor = color;
    m_mask |= BorderColor;
}

void CUGCell::setFont(const QFont &font)
{
    m_font = font;
    m_mask |= Font;
}

void CUGCell::setBitmap(const QImage &bitmap)
{
    m_bitmap = bitmap;
    m_mask |= Bitmap;
}

void CUGCell::setAlignment(std::int16_t alignment)
{
    m_alignment = alignment;
    m_mask |= Alignment;
}

void CUGCell::setExtraData(const QByteArray &data)
{
    m_extraData = data;
    m_mask |= ExtraData;
}

void CUGCell::setJoin(const JoinBlock &block)
{
    m_join = block;
    m_mask |= Join;
}

void CUGCell::setReadOnly(bool readOnly)
{
    m_readOnly = readOnly;
    m_mask |= ReadOnly;
}

void CUGCell::setDecimals(int decimals)
{
    m_decimals = decimals;
    m_mask |= Decimals;
}

void CUGCell::setNumber(double value)
{
    const int places = isSet(Decimals) ? m_decimals : decimalsOf(value);
    setText(QLocale().toString(value, 'f', places));
    setDataType(NumberData);
}

double CUGCell::number() const
{
    const QString written = text().trimmed();
    if (written.isEmpty())
        return 0;
    bool ok = false;
    const double value = QLocale().toDouble(written, &ok);
    return ok ? value : QLocale::c().toDouble(written);
}

} // namespace vyr
