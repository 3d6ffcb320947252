#include "ftprops/dynamicschemainfo.h"

#include "stringobjects/vyrrwstringimp.h"

namespace vyr {

void DynamicSchemaInfo::assignFrom(const IDynamicSchemaInfo &other)
{
    VYRRWStringImp text;
    setOption1(other.getOption1());
    other.getText1(text);
    m_text1.assign(text.data(), text.length());
    setOption2(other.getOption2());
    other.getText2(text);
    m_text2.assign(text.data(), text.length());
    setOption3(other.getOption3());
    other.getText3(text);
    m_text3.assign(text.data(), text.length());
}

} // namespace vyr
