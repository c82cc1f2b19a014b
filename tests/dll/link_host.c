/* Links the import library and uses open and close of the C library: each name means what its header says. */
#include <fcntl.h>
#include <io.h>
#include <stdio.h>
#include <string.h>

#include <quillmate.h>

#define FILE_NAME "link_host.txt"

static int Fails(const char* what) {
  fprintf(stderr, "link_host: %s\n", what);
  return 1;
}

int main(void) {
  char held[8] = "";
  int file = open(FILE_NAME, O_CREAT | O_TRUNC | O_RDWR, 0600);
  if (file < 0 || write(file, "text", 4) != 4) return Fails("the C library's open made no file");
  if (lseek(file, 0, SEEK_SET) != 0 || read(file, held, 4) != 4 || strcmp(held, "text") != 0) {
    return Fails("the file lost its text");
  }
  if (close(file) != 0 || close(file) != -1) return Fails("the C library's close did not close the file");
  if (remove(FILE_NAME) != 0) return Fails("the file is still open");
  if (strstr(quillmate_close("{}"), "Frame not found!") == NULL)
    return Fails("quillmate_close is no command");
  if (strstr(quillmate_open("{\"by\": \"nowhere\"}"), "Parameter verification failed!") == NULL) {
    return Fails("quillmate_open is no command");
  }
  return 0;
}
