#include "transfer/notes.h"

namespace kervan {

void addNote(TextField &bilgi, const std::optional<Failure> &failed)
{
    if (failed)
        bilgi.setText((bilgi.text() + u' ' + failed->description()).trimmed());
}

} // namespace kervan
