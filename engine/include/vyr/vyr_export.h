/* Symbol visibility of the engine's public functions. */
#ifndef VYR_EXPORT_H
#define VYR_EXPORT_H

#if defined(VYR_ENGINE_BUILDING)
#define VYR_ENGINE_API __attribute__((visibility("default")))
#else
#define VYR_ENGINE_API
#endif

#endif /* VYR_EXPORT_H */
