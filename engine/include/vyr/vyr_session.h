/* Making and ending an engine session: what a host does first and last. */
#ifndef VYR_SESSION_H
#define VYR_SESSION_H

#include "vyr/IVYRSession.h"
#include "vyr/vyr_export.h"

extern "C" {

/* A new session; give it back with VYR_SessionDestroy. */
VYR_ENGINE_API IVYRSession *VYR_SessionCreate(void);
/* Ends the session; features, strings and arrays it made must be gone. */
VYR_ENGINE_API void VYR_SessionDestroy(IVYRSession *session);
}

#endif /* VYR_SESSION_H */
