// An engine session for tests of code that borrows strings and arrays from
// a session: it counts what is out, so a test sees that everything came back.
// Features, properties and the prompter answer "none" unless overridden.
#ifndef VYR_TESTS_COUNTINGSESSION_H
#define VYR_TESTS_COUNTINGSESSION_H

#include "stringobjects/vyrrwstringarrayimp.h"
#include "stringobjects/vyrrwstringimp.h"

#include "vyr/IVYRSession.h"

namespace vyr::test {

class CountingSession : public IVYRSession
{
public:
    int stringsOut = 0;
    int arraysOut = 0;
    int featuresOut = 0;

    IVYRString *createString() override
    {
        ++stringsOut;
        return new VYRRWStringImp;
    }
    void destroyString(IVYRString *&text) override
    {
        --stringsOut;
        delete text;
        text = nullptr;
    }
    IVYRStringArray *createStringArray() override
    {
        ++arraysOut;
        return new VYRRWStringArrayImp;
    }
    void destroyStringArray(IVYRStringArray *&array) override
    {
        --arraysOut;
        delete array;
        array = nullptr;
    }
    bool getProperties(const char *, IVYRStringArray &query) override
    {
        query.clear();
        return false;
    }
    IVYRFeature *createFeature() override { return nullptr; }
    void destroyFeature(IVYRFeature *&feature) override { feature = nullptr; }
    IGuiPrompter *getGuiPrompter() override { return nullptr; }
};

} // namespace vyr::test

#endif // VYR_TESTS_COUNTINGSESSION_H
