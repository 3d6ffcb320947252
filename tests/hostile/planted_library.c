/* Stands in for a library someone left in a folder the programs run from: if
 * the loader ever picks it up, its constructor leaves a marker file behind
 * (named by VYR_PLANTED_MARKER, else "planted-library-loaded" in the working
 * directory) and the test sees it. It defines nothing else: where the loader
 * cannot even get as far as the constructor, the program fails to start,
 * which the test sees too. */
#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

__attribute__((constructor)) static void vyr_planted_library_loaded(void)
{
    const char *marker = getenv("VYR_PLANTED_MARKER");
    int fd = open(marker && *marker ? marker : "planted-library-loaded", O_WRONLY | O_CREAT | O_TRUNC, 0644);
    if (fd >= 0) {
        static const char said[] = "loaded\n";
        (void)!write(fd, said, sizeof said - 1);
        close(fd);
    }
}
