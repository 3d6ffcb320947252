// What the dialog shows, read the way a screen reader reads it, and how it
// compares with the model and with what OK saved.
#ifndef VYR_TESTS_MODEL_SCREEN_H
#define VYR_TESTS_MODEL_SCREEN_H

#include "model/featuredata.h"
#include "model/schemamodel.h"

#include <map>
#include <string>
#include <vector>

namespace vyr::model {

class DialogDriver;

struct ShownAttribute
{
    std::string name;
    TypeCells cells;
};

struct ShownFormatAttribute
{
    std::string name;
    bool ticked = false;
    int count = 0;
};

struct Screen
{
    std::string name, user, geometry;
    bool attributesShown = false;
    std::vector<ShownAttribute> attributes; // the new row left out
    std::vector<ShownFormatAttribute> formatAttributes;
    std::map<std::string, std::string> parameters; // shown value by the prompt shown
};

Screen readScreen(const DialogDriver &driver);

// Where the screen and the model disagree, one line each.
Strings differencesFromModel(const Screen &screen, const SchemaModel &model, const DialogDriver &driver);

// Where the saved feature does not hold a row the screen showed (its name,
// its place, its type in the format's words and a generic type).
Strings rowsMissingFromFile(const Screen &screen, const FeatureData &saved, const SchemaModel &model);

} // namespace vyr::model

#endif // VYR_TESTS_MODEL_SCREEN_H
