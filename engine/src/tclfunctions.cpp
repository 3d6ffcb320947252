#include "tclfunctions.h"

#include "vyr/IVYRFeature.h"

#include "stringobjects/vyrrwstringimp.h"
#include "util/installedscripts.h"
#include "util/safefiles.h"

#include <tcl.h>

#include <memory>

namespace vyr::engine {

namespace {

// Validation scripts are small; anything larger is not one.
constexpr std::size_t kLargestScript = 1u << 20;

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

// The safe interpreter's only way to read a file: a validation script of
// the installation, read here and handed to Tcl as the text to evaluate.
int sourceCommand(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    if (objc != 2)
        return wrongArguments(interp, objv, "fileName");
    const std::string path = Tcl_GetString(objv[1]);
    if (!isInstalledScript(path)) {
        Tcl_SetObjResult(interp, Tcl_ObjPrintf("\"%s\" is no script of the installation's %s folder", path.c_str(),
                                               installedScriptFolder().c_str()));
        return TCL_ERROR;
    }
    std::string error;
    const std::optional<std::string> script = readUntrustedFile(path, error, kLargestScript);
    if (!script) {
        Tcl_SetObjResult(interp, Tcl_NewStringObj(error.c_str(), -1));
        return TCL_ERROR;
    }
    const int status = Tcl_EvalEx(interp, script->data(), static_cast<int>(script->size()), 0);
    // "return" at a script's top level ends the script, as it does in source.
    return status == TCL_RETURN ? TCL_OK : status;
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
        // Scripts come with formats, and formats come with workspaces from
        // anywhere: they compute, they never reach the file system, the
        // network, other processes or the environment, and never end the host.
        Tcl_MakeSafe(raw);
        Tcl_UnsetVar(raw, "env", TCL_GLOBAL_ONLY);
        // A safe interpreter still makes pipes, waits on events and creates
        // interpreters of its own, which no time limit reaches: a read that
        // blocks, a sleep, or a child without a limit would hold the host.
        for (const char *name : {"interp", "chan", "gets", "read", "puts", "close", "flush", "eof", "fblocked",
                                 "seek", "tell", "fcopy", "fileevent", "fconfigure", "after", "vwait", "update"})
            Tcl_HideCommand(raw, name, name);
        Tcl_CreateObjCommand(raw, "source", sourceCommand, nullptr, nullptr);
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

bool evaluateTcl(IVYRFeature &feature, const std::string &script, std::chrono::steady_clock::time_point deadline,
                 std::string &result)
{
    const auto left = std::chrono::duration_cast<std::chrono::microseconds>(deadline - std::chrono::steady_clock::now());
    if (left.count() <= 0) {
        result = "time limit exceeded";
        return false;
    }
    Tcl_Interp *interp = interpreter();
    IVYRFeature *outer = currentFeature;
    currentFeature = &feature;
    // Compiled loops run without counting commands, so only the clock stops
    // a script that never ends.
    Tcl_Time stop;
    Tcl_GetTime(&stop);
    const long long microseconds = static_cast<long long>(stop.usec) + left.count() % 1'000'000;
    stop.sec += static_cast<long>(left.count() / 1'000'000 + microseconds / 1'000'000);
    stop.usec = static_cast<long>(microseconds % 1'000'000);
    Tcl_LimitTypeSet(interp, TCL_LIMIT_TIME);
    Tcl_LimitSetTime(interp, &stop);
    const int status = Tcl_EvalEx(interp, script.c_str(), static_cast<int>(script.size()), TCL_EVAL_GLOBAL);
    Tcl_LimitTypeReset(interp, TCL_LIMIT_TIME);
    currentFeature = outer;
    result = Tcl_GetStringResult(interp);
    Tcl_ResetResult(interp);
    return status == TCL_OK;
}

} // namespace vyr::engine
