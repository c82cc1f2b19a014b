// Reads from Windows what the doctor judges.
#pragma once

#include "doctor.h"

namespace quillmate::player {

/// Changes nothing and waits for no other program.
Facts ReadFacts();

}  // namespace quillmate::player
