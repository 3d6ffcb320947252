// The outside components the dialogs call: the help library, the localiser
// and the prompter library. Each is a shared library of the installation
// directory, opened by its absolute path on first use and kept open; a
// missing library or function makes the call answer "nothing done".
#ifndef VYR_UIKIT_OUTSIDESERVICES_H
#define VYR_UIKIT_OUTSIDESERVICES_H

#include <string>

class IGuiPrompter;
class IVYRString;
class IVYRStringArray;

namespace vyr {

// The function `symbol` of the library `fileName` in the installation
// directory, or null.
void *findServiceFunction(const char *fileName, const char *symbol);

// The help library. Both return 0 when it is missing.
int showHelpByString(const std::string &helpFile, const std::string &topic);
int showFormatHelp(const std::string &helpFile, const std::string &formatName, int topicNumber);
// `topic` of the authoring application's help book under the installation
// directory.
int showLoomhouseHelp(const std::string &topic);

// The localiser: the length of the translation in `buffer`, or 0 or less.
int localize(const char *text, char *buffer, int bufferSize);

// The prompter library's selection list; false when it is missing.
bool selectionDialog(IVYRStringArray &all, IVYRStringArray &preselected, IVYRStringArray &icons, IVYRString &title,
                     int flagA, int flagB, IVYRStringArray &chosen, void *parent);

// A GUI definition prompter of the prompter library, for hosts whose engine
// session has none; null when the library is missing. Give it back with
// releaseGuiPrompter.
IGuiPrompter *createGuiPrompter();
void releaseGuiPrompter(IGuiPrompter *prompter);

} // namespace vyr

#endif // VYR_UIKIT_OUTSIDESERVICES_H
