#pragma once

#include <QListView>
#include <functional>
#include <optional>
#include <string>

namespace sonnel {

/// Gives the selection list its context menu: "Add to the queue", also on Ctrl+Return. `accoda`
/// carries it out for the selected line and returns what to tell the user, if anything.
void CreaMenuLista(QListView& lista, std::function<std::optional<std::string>()> accoda);

}  // namespace sonnel
