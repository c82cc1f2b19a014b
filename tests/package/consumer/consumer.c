/* Calls the library through the installed import library; "close" and "open" stay the C library's. */
#include <fcntl.h>
#include <io.h>
#include <quillmate.h>
#include <string.h>

int main(int argc, char** argv) {
  const char* answer = quillmate_click("{\"target\": \"nonsense\"}");
  int file = argc == 1 ? open(argv[0], O_RDONLY) : -1;
  if (file < 0 || close(file) != 0) return 2;
  return answer != NULL && strstr(answer, "location mechanism not support") != NULL ? 0 : 1;
}
