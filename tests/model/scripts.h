// Building scripted sessions for the named cases: the actions a person
// takes, written out with fixed data.
#ifndef VYR_TESTS_MODEL_SCRIPTS_H
#define VYR_TESTS_MODEL_SCRIPTS_H

#include "model/actions.h"

#include <string>

namespace vyr::model::script {

inline Action act(ActionKind kind, std::string text = {}, std::size_t row = 0, std::size_t count = 1)
{
    Action action;
    action.kind = kind;
    action.text = std::move(text);
    action.row = row;
    action.count = count;
    return action;
}

inline Action parameter(std::string name, std::string value, int how = 0)
{
    Action action = act(ActionKind::SetParameter, std::move(value));
    action.name = std::move(name);
    action.how = how;
    return action;
}

inline Action argument(std::size_t row, int which, std::string text, std::size_t count = 1)
{
    Action action = act(ActionKind::TypeArgument, std::move(text), row, count);
    action.which = which;
    return action;
}

inline Action history(ActionKind kind, Grid grid)
{
    Action action = act(kind);
    action.grid = grid;
    return action;
}

inline Ending ending(EndingKind kind)
{
    Ending result;
    result.kind = kind;
    return result;
}

} // namespace vyr::model::script

#endif // VYR_TESTS_MODEL_SCRIPTS_H
