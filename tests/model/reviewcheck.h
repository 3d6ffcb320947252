// The review window in a session: what it said before OK, and what it had
// to say - the difference between the feature as handed over and as OK
// saved it, with each user attribute followed through its row as the model
// follows it. Nothing of the dialog's own bookkeeping is borrowed.
#ifndef VYR_TESTS_MODEL_REVIEWCHECK_H
#define VYR_TESTS_MODEL_REVIEWCHECK_H

#include "model/dialogdriver.h"
#include "model/schemamodel.h"

#include <optional>
#include <string>
#include <vector>

#include <QString>

class IVYRFeature;
class IVYRSession;

namespace vyr::model {

// Opens the review with Control+Shift+R, reads its list and goes back to
// the dialog with Escape. Nothing when the window did not open (the driver
// then holds the problem).
std::optional<QString> readReview(DialogDriver &driver);

// A feature type as the dialog was handed it.
struct HandedOver
{
    std::string json;         // the feature file as it was
    std::string capabilities; // its format's
    // The capability strings of every format of the workspace; empty for
    // the single-feature export.
    std::vector<std::string> workspaceFormats;
};

// The review of what `saved` holds against what was handed over, in the
// user's words, names made legal by the format's rules not listed: the
// model does not follow the words of those rules.
std::string expectedReview(IVYRSession &session, const HandedOver &handedOver, IVYRFeature &saved,
                           const SchemaModel &model);

// How the shown review and the expected one part, a line each; the shown
// one's lines about names made legal are left out first.
Strings reviewDifferences(const QString &shown, const std::string &expected);

} // namespace vyr::model

#endif // VYR_TESTS_MODEL_REVIEWCHECK_H
