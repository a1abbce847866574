#pragma once

#include <QListView>
#include <functional>
#include <optional>
#include <string>

namespace sonnel {

/// Gives the selection list its context menu: "Add to the queue", also on Ctrl+Return. `accoda`
/// adds the selected song and returns a message for the user, if any.
void CreaMenuLista(QListView& lista, std::function<std::optional<std::string>()> accoda);

}  // namespace sonnel
