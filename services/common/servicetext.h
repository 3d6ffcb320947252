// The outside services' own user-visible texts, translated by the localiser.
#ifndef VYR_SERVICES_SERVICETEXT_H
#define VYR_SERVICES_SERVICETEXT_H

#include <QString>

namespace vyr::services {

// The translation of the English `text`, or the text itself.
QString localized(const char *text);

} // namespace vyr::services

#endif // VYR_SERVICES_SERVICETEXT_H
