/* A host in C that links the import library: opens a page, prints the text of its element "greeting", and
 * closes the browser.
 * usage: linked ADDRESS */
#include <stdio.h>
#include <string.h>

#include <quillmate.h>

/* A success carries this member; a host that needs more of the answer parses it, for instance with the cJSON
 * functions that the library exports, too. */
static int Succeeded(const char* answer) {
  return answer != NULL && strstr(answer, "\"success\":\ttrue") != NULL;
}

int main(int argc, char** argv) {
  char parameters[1024];
  const char* answer = NULL;
  int status = 1;
  if (argc != 2 || strlen(argv[1]) > 1000) {
    fprintf(stderr, "usage: linked ADDRESS\n");
    return 2;
  }
  sprintf(parameters, "{\"target\": \"%s\"}", argv[1]);
  answer = quillmate_open(parameters);
  if (!Succeeded(answer)) {
    fprintf(stderr, "open: %s\n", answer != NULL ? answer : "no memory");
    return 1;
  }
  answer = quillmate_gettext("{\"target\": \"id=greeting\"}");
  if (Succeeded(answer)) status = 0;
  /* The text stays valid until the next text; printing it now needs no copy. */
  printf("%s\n", answer != NULL ? answer : "no memory");
  return Succeeded(quillmate_quit(NULL)) ? status : 1;
}
