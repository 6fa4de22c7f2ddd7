#include "hosts/windows_host/job.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "hosts/substitute_host/substitute_host.h"
#include "hosts/windows_host/context_drawing.h"
#include "hosts/windows_host/dialog_script.h"
#include "hosts/windows_host/kept_values.h"
#include "hosts/windows_host/leftovers.h"
#include "hosts/windows_host/loaded_module.h"
#include "hosts/windows_host/picture_files.h"
#include "persistence/settings_codec.h"
#include "platform/windows/windows_api.h"
#include "settings/effect_settings.h"

const char kJobHelp[] =
    "  --picture FILE      PPM, PGM, PAM or BMP to filter\n"
    "  --mask FILE         selection, a PGM of the same size\n"
    "  --area T,L,B,R      the part to filter: top, left, bottom, right\n"
    "  --output FILE       the result: PPM, PGM, or PAM with transparency\n"
    "  --settings FILE     settings file to fill the parameter block with, before Start\n"
    "  --settings-output F settings file of what the parameter block holds afterwards\n"
    "  --environment FILE  picture files for the module to remember, written to the registry;\n"
    "  --texture FILE        - forgets\n"
    "  --forget            take away what the module has kept in earlier runs\n"
    "  --ordinary-user     the machine's registry and folders refuse the module; what it keeps is "
    "the\n"
    "                      user's own\n"
    "  --full-disk         nothing that the module writes into files arrives\n"
    "  --knows-scales      as an editor that is aware of the system's scaling\n"
    "  --kept-values FILE  what it keeps in the registry afterwards\n"
    "  --kept-settings F   its file of the last confirmed settings afterwards\n"
    "  --bitmaps FILE      how many bitmaps there are after each use of the filter\n"
    "  --seed NUMBER       time of day that the module is to find\n"
    "  --dialog SCRIPT     show the dialog and play a script in it (see dialog_script.h)\n"
    "  --by-hand           show the dialog and leave it to you\n"
    "  --about             show the about box; with --dialog play a script in it\n"
    "  --repeat            the filter once more afterwards, without its dialog\n"
    "  --reload            the same with the module loaded anew and both blocks copied\n"
    "  --again SCRIPT      this second time with its dialog\n"
    "  --owner KIND        of the dialogs: window; gone (no window any more); missing (no word of "
    "it)\n"
    "  --manner NAME       harshCalls, hidesSizes, skipsFinish (see host_manners.h). May be given\n"
    "                      several times\n"
    "  --withhold NAME     advanceState, displayPixels, colorServices, handles, buffers, mask,\n"
    "                      sampling; or movingBuffers. May be given several times\n";

static std::string* textOption(Job* job, const std::string& word) {
  if (word == "--picture") return &job->picture;
  if (word == "--mask") return &job->mask;
  if (word == "--output") return &job->output;
  if (word == "--settings") return &job->settings;
  if (word == "--settings-output") return &job->settingsOutput;
  if (word == "--environment") return &job->environment;
  if (word == "--texture") return &job->texture;
  if (word == "--kept-values") return &job->keptValuesOutput;
  if (word == "--kept-settings") return &job->keptSettingsOutput;
  if (word == "--bitmaps") return &job->bitmapsOutput;
  if (word == "--dialog") return &job->dialogScript;
  if (word == "--again") return &job->againScript;
  if (word == "--owner") return &job->owner;
  return nullptr;
}

static bool* switchOption(Job* job, const std::string& word) {
  if (word == "--about") return &job->about;
  if (word == "--by-hand") return &job->byHand;
  if (word == "--forget") return &job->forgets;
  if (word == "--ordinary-user") return &job->ordinaryUser;
  if (word == "--full-disk") return &job->fullDisk;
  if (word == "--knows-scales") return &job->knowsScales;
  if (word == "--repeat") return &job->repeats;
  if (word == "--reload") return &job->reloads;
  return nullptr;
}

static Rectangle parseArea(const std::string& text) {
  int sides[4] = {};
  if (std::sscanf(text.c_str(), "%d,%d,%d,%d", &sides[0], &sides[1], &sides[2], &sides[3]) != 4) {
    failWith(text + " is no area");
  }
  return {static_cast<int16_t>(sides[0]), static_cast<int16_t>(sides[1]),
          static_cast<int16_t>(sides[2]), static_cast<int16_t>(sides[3])};
}

static bool* mannerOf(HostManners* manners, const std::string& name) {
  if (name == "harshCalls") return &manners->harshCalls;
  if (name == "hidesSizes") return &manners->hidesSizes;
  if (name == "skipsFinish") return &manners->skipsFinish;
  failWith("no manner is called " + name);
}

Job parseJob(const std::vector<std::string>& words) {
  Job job;
  for (size_t i = 0; i < words.size(); ++i) {
    if (bool* option = switchOption(&job, words[i])) {
      *option = true;
      continue;
    }
    if (i + 1 == words.size()) failWith("what about " + words[i] + "?");
    const std::string& value = words[i + 1];
    if (std::string* option = textOption(&job, words[i])) {
      *option = value;
    } else if (words[i] == "--seed") {
      job.hasSeed = true;
      job.seed = static_cast<unsigned>(std::strtoul(value.c_str(), nullptr, 10));
    } else if (words[i] == "--area") {
      job.hasArea = true;
      job.area = parseArea(value);
    } else if (words[i] == "--manner") {
      *mannerOf(&job.manners, value) = true;
    } else if (words[i] == "--withhold") {
      job.withheld.push_back(value);
    } else {
      failWith("no option " + words[i]);
    }
    ++i;
  }
  return job;
}

// --- The host -------------------------------------------------------------------------------

static HostSwitches switchesOf(const Job& job) {
  HostSwitches switches;
  switches.display = drawOnContext;
  for (const std::string& name : job.withheld) {
    if (name == "advanceState") {
      switches.advanceState = false;
    } else if (name == "displayPixels") {
      switches.displayPixels = false;
    } else if (name == "colorServices") {
      switches.colorServices = false;
    } else if (name == "handles") {
      switches.handleSuite = SuiteOffer::absent;
    } else if (name == "buffers") {
      switches.bufferSuite = SuiteOffer::absent;
    } else if (name == "mask") {
      switches.deliverMask = false;
    } else if (name == "sampling") {
      switches.honourSampling = false;
    } else if (name == "movingBuffers") {
      switches.moveBuffers = true;
    } else {
      failWith("nothing is called " + name);
    }
  }
  return switches;
}

static EffectSettings* parameterBlock() {
  Handle handle = hostRecord()->parameters;
  return handle != nullptr ? static_cast<EffectSettings*>(*handle) : nullptr;
}

static void fillParameterBlock(const std::string& path) {
  const std::vector<uint8_t> bytes = readBytes(path);
  DecodedSettings decoded;
  decodeSettings(bytes.data(), bytes.size(), parameterBlock(), &decoded);
  if (!decoded.complete) failWith(path + ": is no whole settings file");
}

static void saveParameterBlock(const std::string& path) {
  std::vector<uint8_t> bytes(kLongestEncodedSettings);
  bytes.resize(encodeSettings(parameterBlock(), bytes.data()));
  writeBytes(path, bytes);
}

// The window of the host that the module's dialogs belong to.
static HWND makeOwner(const Job& job) {
  if (job.owner.empty() || job.owner == "missing") return nullptr;
  HWND window = CreateWindowExA(0, "STATIC", "windows_host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 40,
                                40, 400, 300, nullptr, nullptr, nullptr, nullptr);
  if (job.owner == "gone") {
    DestroyWindow(window);
  } else if (job.owner != "window") {
    failWith("no owner is called " + job.owner);
  }
  return window;
}

static void dismissOwner(const Job& job, HWND owner) {
  if (job.owner != "window") return;
  if (!IsWindowEnabled(owner)) failWith("the module leaves its owner disabled");
  DestroyWindow(owner);
}

static const char* captionOf(const Job& job) {
  return job.about ? "About Morvalis" : "Morvalis";
}

// One call with a dialog of the module, played by the script when there is one.
template <typename Call>
static int16_t withScript(const Job& job, const std::string& script, HWND owner, Call call) {
  const bool played = !script.empty();
  if (played) startDialogScript(script, captionOf(job), job.owner == "window" ? owner : nullptr);
  const int16_t result = call();
  if (played) finishDialogScript();
  return result;
}

static int16_t filterOnce(const Job& job, HWND owner) {
  if (job.byHand || !job.dialogScript.empty()) {
    return withScript(job, job.dialogScript, owner, runFilter);
  }
  const int16_t result = callSelector(kSelectorPrepare);
  if (result != kNoError) return result;
  if (!job.settings.empty()) fillParameterBlock(job.settings);
  return renderFilter();
}

static void noteBitmaps(const Job& job) {
  if (job.bitmapsOutput.empty()) return;
  std::ofstream(job.bitmapsOutput, std::ios::app) << bitmapCount() << '\n';
}

static void load(const Job& job, const std::string& modulePath) {
  const std::string reason = loadModule(modulePath);
  if (!reason.empty()) failWith(modulePath + ": " + reason);
  if (job.hasSeed) fixModuleClock(job.seed);
  if (job.knowsScales) SetProcessDPIAware();
  if (job.fullDisk) fillModuleDisk();
  if (job.ordinaryUser) refuseWhatIsTheMachines();
}

static int16_t filterAgain(const Job& job, HWND owner, const std::string& modulePath) {
  if (job.reloads) {
    copyKeptBlocks();
    unloadModuleForGood();
    load(job, modulePath);
  }
  return job.againScript.empty() ? repeatFilter()
                                 : withScript(job, job.againScript, owner, runFilter);
}

int runJob(const Job& job, const std::string& modulePath) {
  load(job, modulePath);
  HostPicture picture = {1, 1, 3, {0, 0, 0}};
  if (!job.picture.empty()) picture = readPicture(job.picture);
  openHost(switchesOf(job), picture, job.mask.empty() ? HostMask() : readMask(job.mask, picture));
  if (job.ordinaryUser) keepValuesForUser();
  if (job.forgets) forgetKeptValues();
  setKeptValue("ChromeFile", job.environment);
  setKeptValue("TextureFile", job.texture);
  HWND owner = makeOwner(job);
  hostRecord()->platformData->hwnd = owner;
  if (job.owner == "missing") hostRecord()->platformData = nullptr;
  if (job.hasArea) setFilterRect(job.area);
  setHostManners(job.manners);
  const auto showAbout = [owner] { return callAbout(owner); };
  int16_t result =
      job.about ? withScript(job, job.dialogScript, owner, showAbout) : filterOnce(job, owner);
  noteBitmaps(job);
  if (result == kNoError && (job.repeats || job.reloads || !job.againScript.empty())) {
    result = filterAgain(job, owner, modulePath);
    noteBitmaps(job);
  }
  dismissOwner(job, owner);
  if (!job.settingsOutput.empty()) saveParameterBlock(job.settingsOutput);
  if (!job.keptValuesOutput.empty()) saveKeptValues(job.keptValuesOutput);
  if (!job.keptSettingsOutput.empty()) saveKeptSettings(job.keptSettingsOutput);
  if (result == kNoError && !job.output.empty()) writePicture(job.output, filteredPicture());
  if (hostLedger().misuses != 0) failWith("the module has misused the host's services");
  closeHost();
  unloadModule();
  return result;
}
