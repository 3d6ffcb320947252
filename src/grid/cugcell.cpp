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
    const auto take = [set](auto &field, const auto &from, Property property) {
        if (set & property)
            field = from;
    };
    take(m_text, source.m_text, Text);
    take(m_maskText, source.m_maskText, Mask);
    take(m_label, source.m_label, Label);
    take(m_dataType, source.m_dataType, DataType);
    take(m_userValue, source.m_userValue, UserValue);
    take(m_cellType, source.m_cellType, CellType);
    take(m_cellTypeParam, source.m_cellTypeParam, CellTypeParam);
    take(m_textColor, source.m_textColor, TextColor);
    take(m_backColor, source.m_backColor, BackColor);
    take(m_highlightText, source.m_highlightText, HighlightTextColor);
    take(m_highlightBack, source.m_highlightBack, HighlightBackColor);
    take(m_borderStyle, source.m_borderStyle, BorderStyle);
    take(m_borderColor, source.m_borderColor, BorderColor);
    take(m_font, source.m_font, Font);
    take(m_bitmap, source.m_bitmap, Bitmap);
    take(m_alignment, source.m_alignment, Alignment);
    take(m_extraData, source.m_extraData, ExtraData);
    take(m_join, source.m_join, Join);
    take(m_readOnly, source.m_readOnly, ReadOnly);
    take(m_decimals, source.m_decimals, Decimals);
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
    store(m_text, text, Text);
}

void CUGCell::setMask(const QString &mask)
{
    store(m_maskText, mask, Mask);
}

void CUGCell::setLabel(const QString &label)
{
    store(m_label, label, Label);
}

void CUGCell::setDataType(std::int16_t type)
{
    store(m_dataType, type, DataType);
}

void CUGCell::setUserValue(std::intptr_t value)
{
    store(m_userValue, value, UserValue);
}

void CUGCell::setCellType(int index)
{
    store(m_cellType, index, CellType);
}

void CUGCell::setCellTypeParam(int parameter)
{
    store(m_cellTypeParam, parameter, CellTypeParam);
}

void CUGCell::setTextColor(const QColor &color)
{
    store(m_textColor, color, TextColor);
}

void CUGCell::setBackColor(const QColor &color)
{
    store(m_backColor, color, BackColor);
}

void CUGCell::setHighlightTextColor(const QColor &color)
{
    store(m_highlightText, color, HighlightTextColor);
}

void CUGCell::setHighlightBackColor(const QColor &color)
{
    store(m_highlightBack, color, HighlightBackColor);
}

void CUGCell::setBorderStyle(std::int16_t style)
{
    store(m_borderStyle, style, BorderStyle);
}

void CUGCell::setBorderColor(const QColor &color)
{
    store(m_borderColor, color, BorderColor);
}

void CUGCell::setFont(const QFont &font)
{
    store(m_font, font, Font);
}

void CUGCell::setBitmap(const QImage &bitmap)
{
    store(m_bitmap, bitmap, Bitmap);
}

void CUGCell::setAlignment(std::int16_t alignment)
{
    store(m_alignment, alignment, Alignment);
}

void CUGCell::setExtraData(const QByteArray &data)
{
    store(m_extraData, data, ExtraData);
}

void CUGCell::setJoin(const JoinBlock &block)
{
    store(m_join, block, Join);
}

void CUGCell::setReadOnly(bool readOnly)
{
    store(m_readOnly, readOnly, ReadOnly);
}

void CUGCell::setDecimals(int decimals)
{
    store(m_decimals, decimals, Decimals);
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
