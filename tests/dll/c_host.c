/* A host written in C: the header compiles as C, and the import library resolves commands and cJSON alike. */
#include <stdio.h>
#include <string.h>

#include <cJSON.h>
#include <quillmate.h>

static int Fails(const char* what) {
  fprintf(stderr, "c_host: %s\n", what);
  return 1;
}

int main(void) {
  cJSON* envelope = NULL;
  const char* log = NULL;
  if (strcmp(quillmate_perform(NULL), "{\n\t\"success\":\ttrue,\n\t\"result\":\ttrue\n}") != 0)
    return Fails("perform");
  envelope = cJSON_Parse(quillmate_click("{\"target\": \"css=a\"}"));
  if (!cJSON_IsFalse(cJSON_GetObjectItem(envelope, "success"))) return Fails("click succeeded");
  log = cJSON_GetStringValue(cJSON_GetObjectItem(envelope, "log"));
  if (log == NULL || strstr(log, "element location") == NULL) return Fails("click's message");
  cJSON_Delete(envelope);
  return 0;
}
