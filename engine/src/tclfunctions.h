// "@TCL(script)" functions of engine features, evaluated by an embedded Tcl
// 8.6 interpreter (one per thread, kept for the thread's life).
//
// A script sees the feature it runs on through these commands:
//   vyr_feature_type ?name?          the feature type; with a name, sets it
//   vyr_attribute name ?value?       an attribute's value (an error when it is
//                                    absent); with a value, sets it
//   vyr_attribute_exists name        1 or 0
//   vyr_remove_attribute name
// Global variables persist between evaluations on the same thread, so a
// script may keep state (and must unset what it no longer needs). The
// interpreter is a safe one with no channels, events or child interpreters
// either: a script computes and works on its feature, nothing else. It
// reads no file but the installation's validation scripts, through
// "source".
// Errors are Tcl errors: the evaluation reports them and the host goes on.
#ifndef VYR_ENGINE_TCLFUNCTIONS_H
#define VYR_ENGINE_TCLFUNCTIONS_H

#include <chrono>
#include <string>
#include <string_view>

class IVYRFeature;

namespace vyr::engine {

// Whether `function` is an "@TCL(...)" function; `script` gets its body.
bool isTclFunction(std::string_view function, std::string &script);

// Evaluates `script` on `feature`, stopping it at `deadline`. True with the
// script's result in `result`, or false with the error message there.
bool evaluateTcl(IVYRFeature &feature, const std::string &script, std::chrono::steady_clock::time_point deadline,
                 std::string &result);

} // namespace vyr::engine

#endif // VYR_ENGINE_TCLFUNCTIONS_H
