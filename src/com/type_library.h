// The description of the browser's interfaces, from which calls to another process are put together.
#pragma once

namespace quillmate::com {

/// Keeps the type library of the browser's document model loaded until the process ends. Without it some
/// systems read the whole library again for each new object, which makes a call several times slower.
void HoldTypeLibrary();

}  // namespace quillmate::com
