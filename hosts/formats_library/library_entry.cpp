// The door of the library: it starts the picture library behind it with what a program that reads
// strangers' files wants of it.

#include <dlfcn.h>
#include <vips/vips.h>

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <future>
#include <new>
#include <string>
#include <thread>
#include <vector>

#include "hosts/formats_library/formats.h"
#include "hosts/picture_files/formats_library.h"

constexpr char kMoreFormats[] = "MORVALIS_MORE_FORMATS";
constexpr char kHome[] = "VIPSHOME";

bool moreFormatsWanted() {
  const char* wanted = std::getenv(kMoreFormats);
  return wanted != nullptr && std::string(wanted) == "1";
}

// The library below ends the process when it gets no memory; the program does it in good order.
static void endIfFatal(GLogLevelFlags level) {
  if ((level & G_LOG_LEVEL_ERROR) == 0) return;
  try {
    throw std::bad_alloc();
  } catch (const std::bad_alloc&) {
    std::terminate();
  }
}

static void keepComplaintsQuiet() {
  g_log_set_default_handler(
      [](const char*, GLogLevelFlags level, const char*, void*) { endIfFatal(level); }, nullptr);
  g_log_set_writer_func(
      [](GLogLevelFlags level, const GLogField*, gsize, void*) {
        endIfFatal(level);
        return G_LOG_WRITER_HANDLED;
      },
      nullptr, nullptr);
}

// Its plug-ins are looked for below a folder that does not exist: some of them take longer to load
// than a small picture takes altogether, and are for formats that nobody has tested with bad files.
static bool start() {
  if (!moreFormatsWanted()) setenv(kHome, "/nonexistent", 1);
  keepComplaintsQuiet();
  if (vips_init("morvalis") != 0) return false;
  vips_cache_set_max(0);
  vips_concurrency_set(1);
  if (!moreFormatsWanted()) vips_block_untrusted_set(TRUE);
  return true;
}

// The tested ones of the plug-ins are loaded one by one. Where there is none its formats are not to
// be had.
void loadPlugIn(const char* name) {
  if (moreFormatsWanted()) return;
  Dl_info library = {};
  if (dladdr(reinterpret_cast<void*>(vips_init), &library) == 0) return;
  const std::string file = library.dli_fname;
  const std::string folder = file.substr(0, file.rfind('/'));
  const std::string plugIns = folder + "/vips-modules-" + std::to_string(vips_version(0)) + "." +
                              std::to_string(vips_version(1)) + "/";
  GModule* module = g_module_open((plugIns + name).c_str(), G_MODULE_BIND_LAZY);
  if (module != nullptr) g_module_make_resident(module);
}

bool coderThreadsStart() {
  constexpr unsigned kBesidesCores = 8;
  std::promise<void> go;
  const std::shared_future<void> gone = go.get_future().share();
  std::vector<std::thread> threads;
  bool all = true;
  try {
    const unsigned count = std::thread::hardware_concurrency() + kBesidesCores;
    while (threads.size() < count) threads.emplace_back([gone] { gone.wait(); });
  } catch (const std::exception&) {
    all = false;
  }
  go.set_value();
  for (std::thread& thread : threads) thread.join();
  return all;
}

std::string takeReason() {
  std::string reason = vips_error_buffer();
  vips_error_clear();
  reason.resize(std::min(reason.size(), reason.find('\n')));
  const size_t colon = reason.find(": ");  // behind the procedure's name
  return colon == std::string::npos ? reason : reason.substr(colon + 2);
}

extern "C" __attribute__((visibility("default"))) const FormatsLibrary* morvalisFormats() {
  static const FormatsLibrary library = {loadFormat,   saveFormat,    convertAll,
                                         tellProgress, resizePicture, drawText};
  static const bool started = start();
  return started ? &library : nullptr;
}
