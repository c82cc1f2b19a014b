// The exported functions, one a command. The module-definition file exports each under its plain name, which
// as a symbol would clash with the C library's (open, close).
#include "api/messages.h"
#include "api/run_command.h"
#include "commands.h"

namespace quillmate {
namespace {

template <class... Names>
constexpr bool AreNamed(Names...) {
  return sizeof...(Names) > 0;
}

}  // namespace

#define QUILLMATE_COMMAND(name, function, failure, ...)                                  \
  extern "C" const char* quillmate_##name(const char* parameters) {                      \
    return RunCommand({function, messages::failure, AreNamed(__VA_ARGS__)}, parameters); \
  }
#define QUILLMATE_SAME_COMMAND(name, same, ...)
#include "command_list.inc"

}  // namespace quillmate
