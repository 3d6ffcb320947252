/* A stand-in for libvyr_dirDialog.so that records how it was called and
 * answers as the test told it. Built a second time without its picker
 * function, as a library that lacks it. */
#include <string.h>

#define FAKE_API __attribute__((visibility("default")))

struct FakeDirDialogCall
{
    int calls;
    char title[512];
    char prompt[512];
    char pathIn[300];
    void *parent;
    int option;
};

static struct FakeDirDialogCall lastCall;
static int answer;
static char answerPath[300];
static int answerLength = -1;

FAKE_API const struct FakeDirDialogCall *fake_dirDialog_lastCall(void)
{
    return &lastCall;
}

/* The next call answers `result` and, unless `length` is negative, first
 * writes `length` bytes of `path` into the caller's buffer. */
FAKE_API void fake_dirDialog_answer(int result, const char *path, int length)
{
    answer = result;
    answerLength = length;
    if (length > 0)
        memcpy(answerPath, path, (size_t)length);
}

#ifndef FAKE_WITHOUT_PICKER
FAKE_API int VYR_SelectGeodatabase(const char *title, const char *prompt, char *path, void *parent, int option)
{
    ++lastCall.calls;
    strncpy(lastCall.title, title, sizeof lastCall.title - 1);
    strncpy(lastCall.prompt, prompt, sizeof lastCall.prompt - 1);
    /* The real buffer holds 260 bytes: copying them all shows whether the
     * caller terminated its text inside. */
    memcpy(lastCall.pathIn, path, 260);
    lastCall.parent = parent;
    lastCall.option = option;
    if (answerLength >= 0)
        memcpy(path, answerPath, (size_t)answerLength);
    return answer;
}
#endif
