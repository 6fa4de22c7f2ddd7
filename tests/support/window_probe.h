// window_probe: what the procedure of a window is told, in words.

#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/window.h"

// What a window's procedure has been told, and what it does about it.
struct WindowProbe {
  std::vector<std::string> events;
  std::function<bool(Window*, const WindowEvent&)> answer = [](Window*, const WindowEvent&) {
    return false;
  };

  std::vector<std::string> take();
};
bool probeProcedure(Window* window, const WindowEvent& event, void* probe);
