#include "platform/none/none_state.h"
#include "platform/window.h"

int32_t runMainDialog(SessionRecord* session, void*) {
  ++noneState().record.mainDialogs;
  const auto& play = noneState().script.mainDialog;
  return play ? play(session) : kDialogUnavailable;
}

void runAboutBox(void*) {
  ++noneState().record.aboutBoxes;
}
