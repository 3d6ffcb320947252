#include "grid/cuggridinfo.h"

#include "grid/cugmem.h"

namespace vyr {

CUGGridInfo::CUGGridInfo()
    : ownStore(std::make_unique<CUGMem>())
    , dataSource(ownStore.get())
{
    // Headings look like buttons: the palette's button colour (left unset
    // so that theme changes reach them), raised, text centred both ways.
    headingDefault.setBorderStyle(8192);
    headingDefault.setAlignment(CUGCell::AlignCenter | CUGCell::AlignVCenter);
}

} // namespace vyr
