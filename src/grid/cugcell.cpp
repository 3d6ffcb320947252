#include "grid/cugcell.h"

#include <QLocale>

#include <cstdio>
#include <utility>

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

CUGCell::CUGCell(const CUGCell &other)
    : m_mask(other.m_mask)
    , m_dataType(other.m_dataType)
    , m_alignment(other.m_alignment)
    , m_readOnly(other.m_readOnly)
    , m_cellType(other.m_cellType)
    , m_cellTypeParam(other.m_cellTypeParam)
    , m_decimals(other.m_decimals)
    , m_userValue(other.m_userValue)
    , m_text(other.m_text)
    , m_rare(other.m_mask & kRareProperties ? other.m_rare : nullptr)
{
}

CUGCell &CUGCell::operator=(const CUGCell &other)
{
    if (this != &other) {
        CUGCell copy(other);
        *this = std::move(copy);
    }
    return *this;
}

const CUGCell::Rare &CUGCell::rare() const
{
    static const Rare nothing;
    return m_rare ? *m_rare : nothing;
}

CUGCell::Rare &CUGCell::rareForWriting()
{
    if (!m_rare)
        m_rare = std::make_shared<Rare>();
    else if (m_rare.use_count() > 1)
        m_rare = std::make_shared<Rare>(*m_rare);
    return *m_rare;
}

const QString &CUGCell::textRef() const
{
    static const QString nothing;
    return isSet(Text) ? m_text : nothing;
}

namespace {

template <class Field>
void takeIfSet(std::uint32_t set, Field &field, const Field &from, std::uint32_t property)
{
    if (set & property)
        field = from;
}

} // namespace

void CUGCell::addRareFrom(const std::shared_ptr<Rare> &from, std::uint32_t set)
{
    // When the source sets every rare property this cell has, its block
    // holds all this cell will read: share it rather than copy into ours.
    const std::uint32_t ours = m_mask & kRareProperties;
    if ((ours & ~set) == 0) {
        m_rare = from;
        return;
    }
    const Rare &source = *from;
    Rare &target = rareForWriting();
    takeIfSet(set, target.maskText, source.maskText, Mask);
    takeIfSet(set, target.label, source.label, Label);
    takeIfSet(set, target.textColor, source.textColor, TextColor);
    takeIfSet(set, target.backColor, source.backColor, BackColor);
    takeIfSet(set, target.highlightText, source.highlightText, HighlightTextColor);
    takeIfSet(set, target.highlightBack, source.highlightBack, HighlightBackColor);
    takeIfSet(set, target.borderStyle, source.borderStyle, BorderStyle);
    takeIfSet(set, target.borderColor, source.borderColor, BorderColor);
    takeIfSet(set, target.font, source.font, Font);
    takeIfSet(set, target.bitmap, source.bitmap, Bitmap);
    takeIfSet(set, target.extraData, source.extraData, ExtraData);
    takeIfSet(set, target.join, source.join, Join);
}

void CUGCell::addAllFrom(const CUGCell &source)
{
    const std::uint32_t set = source.m_mask;
    takeIfSet(set, m_text, source.m_text, Text);
    takeIfSet(set, m_dataType, source.m_dataType, DataType);
    takeIfSet(set, m_userValue, source.m_userValue, UserValue);
    takeIfSet(set, m_cellType, source.m_cellType, CellType);
    takeIfSet(set, m_cellTypeParam, source.m_cellTypeParam, CellTypeParam);
    takeIfSet(set, m_alignment, source.m_alignment, Alignment);
    takeIfSet(set, m_readOnly, source.m_readOnly, ReadOnly);
    takeIfSet(set, m_decimals, source.m_decimals, Decimals);
    if ((set & kRareProperties) && source.m_rare)
        addRareFrom(source.m_rare, set);
    m_mask |= set;
}

void CUGCell::copyInfoFrom(const CUGCell &source)
{
    m_mask = source.m_mask;
    addInfoFrom(source);
    if (!(m_mask & kRareProperties))
        m_rare.reset();
}

void CUGCell::clearRare()
{
    // A block of our own is kept for the next use; a shared one is let go.
    if (m_rare.use_count() == 1) {
        m_rare->label.clear();
        m_rare->extraData.clear();
    } else {
        m_rare.reset();
    }
}

void CUGCell::setText(const QString &text)
{
    store(m_text, text, Text);
}

void CUGCell::setText(QString &&text)
{
    m_text = std::move(text);
    m_mask |= Text;
}

QString CUGCell::takeText()
{
    if (!isSet(Text))
        return QString();
    m_mask &= ~std::uint32_t(Text);
    return std::exchange(m_text, QString());
}

void CUGCell::setMask(const QString &mask)
{
    store(rareForWriting().maskText, mask, Mask);
}

void CUGCell::setLabel(const QString &label)
{
    store(rareForWriting().label, label, Label);
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
    store(rareForWriting().textColor, color, TextColor);
}

void CUGCell::setBackColor(const QColor &color)
{
    store(rareForWriting().backColor, color, BackColor);
}

void CUGCell::setHighlightTextColor(const QColor &color)
{
    store(rareForWriting().highlightText, color, HighlightTextColor);
}

void CUGCell::setHighlightBackColor(const QColor &color)
{
    store(rareForWriting().highlightBack, color, HighlightBackColor);
}

void CUGCell::setBorderStyle(std::int16_t style)
{
    store(rareForWriting().borderStyle, style, BorderStyle);
}

void CUGCell::setBorderColor(const QColor &color)
{
    store(rareForWriting().borderColor, color, BorderColor);
}

void CUGCell::setFont(const QFont &font)
{
    store(rareForWriting().font, font, Font);
}

void CUGCell::setBitmap(const QImage &bitmap)
{
    store(rareForWriting().bitmap, bitmap, Bitmap);
}

void CUGCell::setAlignment(std::int16_t alignment)
{
    store(m_alignment, alignment, Alignment);
}

void CUGCell::setExtraData(const QByteArray &data)
{
    store(rareForWriting().extraData, data, ExtraData);
}

void CUGCell::setJoin(const JoinBlock &block)
{
    store(rareForWriting().join, block, Join);
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
