/* Includes the header between headers that declare open, close, read and gettext themselves. */
#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <quillmate.h>
#include <unistd.h>

quillmate_command FindOpen(HMODULE library);
const char* Greeting(void);

quillmate_command FindOpen(HMODULE library) { return QUILLMATE_LOAD(library, open); }
const char* Greeting(void) { return quillmate_gettext("{}"); }
