// Images of what the printer keeps, as text lines of the form name=value: the backup of its settings and
// pictures, and its memory as it is. Passwords are in neither.
#pragma once

#include "virtual_printer/answers/question.h"
#include "virtual_printer/answers/replies.h"

namespace virtual_printer {

// What restoreBCKP would bring back. Page 0 is the whole; the pages from 1 on have a few lines each, so that
// a till with a small buffer can read one after the other: behind the last one they are empty.
Reply backupImage(const Question& question);
Reply memoryImage(const Question& question);

} // namespace virtual_printer
