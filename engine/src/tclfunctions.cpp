#include "tclfunctions.h"

#include "vyr/IVYRFeature.h"

#include "frame/vyrrwstringimp.h"

#include <tcl.h>

#include <cstdlib>
#include <memory>

namespace vyr::engine {

namespace {

// Compiled loops run without counting commands, so only the clock stops
// a script that never ends.
long secondsLimit()
{
    const char *configured = std::getenv("VYR_TCL_SECONDS");
    const long seconds = configured ? std::strtol(configured, nullptr, 10) : 0;
    return seconds > 0 ? seconds : 10;
}

// The feature the running evaluation works on; set only during one.
thread_local IVYRFeature *currentFeature = nullptr;

int wrongArguments(Tcl_Interp *interp, Tcl_Obj *const objv[], const char *usage)
{
    Tcl_WrongNumArgs(interp, 1, objv, usage);
    return TCL_ERROR;
}

int featureTypeCommand(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    if (objc > 2)
        return wrongArguments(interp, objv, "?name?");
    if (objc == 2)
        currentFeature->setFeatureType(Tcl_GetString(objv[1]));
    Tcl_SetObjResult(interp, Tcl_NewStringObj(currentFeature->getFeatureType(), -1));
    return TCL_OK;
}

int attributeCommand(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    if (objc != 2 && objc != 3)
        return wrongArguments(interp, objv, "name ?value?");
    const char *name = Tcl_GetString(objv[1]);
    if (objc == 3)
        currentFeature->setAttribute(name, Tcl_GetString(objv[2]));
    VYRRWStringImp value;
    if (!currentFeature->getAttribute(name, value)) {
        Tcl_SetObjResult(interp, Tcl_ObjPrintf("no attribute \"%s\"", name));
        return TCL_ERROR;
    }
    Tcl_SetObjResult(interp, Tcl_NewStringObj(value.data(), static_cast<int>(value.length())));
    return TCL_OK;
}

int attributeExistsCommand(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    if (objc != 2)
        return wrongArguments(interp, objv, "name");
    VYRRWStringImp value;
    Tcl_SetObjResult(interp, Tcl_NewBooleanObj(currentFeature->getAttribute(Tcl_GetString(objv[1]), value)));
    return TCL_OK;
}

int removeAttributeCommand(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    if (objc != 2)
        return wrongArguments(interp, objv, "name");
    currentFeature->removeAttribute(Tcl_GetString(objv[1]));
    return TCL_OK;
}

struct InterpreterDeleter
{
    void operator()(Tcl_Interp *interp) const { Tcl_DeleteInterp(interp); }
};

Tcl_Interp *interpreter()
{
    static thread_local std::unique_ptr<Tcl_Interp, InterpreterDeleter> interp = [] {
        static const bool initialised = [] {
            Tcl_FindExecutable(nullptr);
            return true;
        }();
        (void)initialised;
        std::unique_ptr<Tcl_Interp, InterpreterDeleter> made(Tcl_CreateInterp());
        Tcl_Interp *raw = made.get();
        // A script must never end the host process.
        Tcl_DeleteCommand(raw, "exit");
        Tcl_CreateObjCommand(raw, "vyr_feature_type", featureTypeCommand, nullptr, nullptr);
        Tcl_CreateObjCommand(raw, "vyr_attribute", attributeCommand, nullptr, nullptr);
        Tcl_CreateObjCommand(raw, "vyr_attribute_exists", attributeExistsCommand, nullptr, nullptr);
        Tcl_CreateObjCommand(raw, "vyr_remove_attribute", removeAttributeCommand, nullptr, nullptr);
        return made;
    }();
    return interp.get();
}

} // namespace

bool isTclFunction(std::string_view function, std::string &script)
{
    constexpr std::string_view kOpen = "@TCL(";
    if (!function.starts_with(kOpen) || !function.ends_with(")"))
        return false;
    script = std::string(function.substr(kOpen.size(), function.size() - kOpen.size() - 1));
    return true;
}

bool evaluateTcl(IVYRFeature &feature, const std::string &script, std::string &result)
{
    Tcl_Interp *interp = interpreter();
    IVYRFeature *outer = currentFeature;
    currentFeature = &feature;
    Tcl_Time deadline;
    Tcl_GetTime(&deadline);
    deadline.sec += secondsLimit();
    Tcl_LimitTypeSet(interp, TCL_LIMIT_TIME);
    Tcl_LimitSetTime(interp, &deadline);
    const int status = Tcl_EvalEx(interp, script.c_str(), static_cast<int>(script.size()), TCL_EVAL_GLOBAL);
    Tcl_LimitTypeReset(interp, TCL_LIMIT_TIME);
    currentFeature = outer;
    result = Tcl_GetStringResult(interp);
    Tcl_ResetResult(interp);
    return status == TCL_OK;
}

} // namespace vyr::engine
