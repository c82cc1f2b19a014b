/* Built for Microsoft's tools and linked with quillmate.lib, without any C library. */
#include <quillmate.h>

int Start(void);

/* The value of "success" begins at the fifteenth letter of every result. */
static int Succeeds(const char* result) { return result != 0 && result[14] == 't'; }

int Start(void) { return Succeeds(quillmate_perform(0)) && !Succeeds(quillmate_close(0)) ? 0 : 1; }
