#pragma once

#include "library/SincronizzaDB.h"
#include "platform/CommonDialog.h"

namespace sonnel {

/// Lets the person choose LYK files of another directory and brings these songs into the library:
/// copies each LYK and MID file, enters the song in the index, and at the end loads the index again
/// and refills the list. Message boxes tell what cannot be added. A copy that fails ends the import
/// and leaves nothing of that song; the songs copied before stay.
void AggiungiBrani(const Libreria& libreria, CommonDialog& dialoghi, ListaBrani& lista);

}  // namespace sonnel
