// The plug-in for GIMP 2.10.

#include <gegl.h>

#include <cstdlib>

#include "hosts/gimp/gimp_run.h"

constexpr char kAuthor[] = "The authors of Morvalis";
constexpr char kYear[] = "2026";

// GIMP 2.10 draws by X11, and its window has a name there only.
static void useDisplayOfGimp() {
  const char* display = gimp_display_name();
  if (display != nullptr && *display != 0) g_setenv("DISPLAY", display, TRUE);
  if (g_getenv("DISPLAY") != nullptr) g_setenv("QT_QPA_PLATFORM", "xcb", FALSE);
}

static void query() {
  const GimpParamDef arguments[] = {
      {GIMP_PDB_INT32, g_strdup("run-mode"),
       g_strdup("The run mode { RUN-INTERACTIVE (0), RUN-NONINTERACTIVE (1), "
                "RUN-WITH-LAST-VALS (2) }")},
      {GIMP_PDB_IMAGE, g_strdup("image"), g_strdup("Input image")},
      {GIMP_PDB_DRAWABLE, g_strdup("drawable"), g_strdup("Input drawable")},
      {GIMP_PDB_STRING, g_strdup("preset"), g_strdup(kPresetHelp)},
      {GIMP_PDB_STRING, g_strdup("settings"), g_strdup(kSettingsHelp)},
      {GIMP_PDB_INT32, g_strdup("seed"), g_strdup(kSeedHelp)}};
  gimp_install_procedure(kProcedure, kBlurb, kHelp, kAuthor, kAuthor, kYear, kMenuLabel,
                         kImageTypes, GIMP_PLUGIN, G_N_ELEMENTS(arguments), 0, arguments, nullptr);
  gimp_plugin_menu_register(kProcedure, kMenuPath);
  gimp_plugin_icon_register(kProcedure, GIMP_ICON_TYPE_ICON_NAME,
                            reinterpret_cast<const guint8*>(kIconName));
}

// Callers that ask for the last values, or for the dialog, leave the rest out.
static GimpCall callOf(gint count, const GimpParam* arguments) {
  GimpCall call;
  const gint32 mode = arguments[0].data.d_int32;
  call.manner = mode == GIMP_RUN_INTERACTIVE      ? CallManner::byDialog
                : mode == GIMP_RUN_WITH_LAST_VALS ? CallManner::byLastValues
                                                  : CallManner::byArguments;
  call.drawable = arguments[2].data.d_drawable;
  if (call.manner != CallManner::byArguments || count < 6) return call;
  const char* preset = arguments[3].data.d_string;
  const char* settings = arguments[4].data.d_string;
  call.preset = preset == nullptr ? "" : preset;
  call.settings = settings == nullptr ? "" : settings;
  call.seed = arguments[5].data.d_int32;
  return call;
}

// The answer's values stay until the next call.
static void run(const gchar*, gint count, const GimpParam* arguments, gint* answerCount,
                GimpParam** answers) {
  static GimpParam values[2];
  *answers = values;
  *answerCount = 1;
  values[0].type = GIMP_PDB_STATUS;
  values[0].data.d_status = GIMP_PDB_CALLING_ERROR;
  if (count < 3) return;

  gegl_init(nullptr, nullptr);
  GimpCall call = callOf(count, arguments);
  if (call.manner == CallManner::byDialog) {
    useDisplayOfGimp();
    const gint window = gimp_display_get_window_handle(gimp_default_display());
    call.window = static_cast<uint64_t>(static_cast<uint32_t>(window));
  }
  const GimpAnswer answer = runInGimp(call);
  values[0].data.d_status = statusOf(answer.end);
  if (!answer.text.empty()) {
    values[1].type = GIMP_PDB_STRING;
    values[1].data.d_string = g_strdup(answer.text.c_str());
    *answerCount = 2;
  }
  if (answer.end == CallEnd::done && arguments[0].data.d_int32 != GIMP_RUN_NONINTERACTIVE) {
    gimp_displays_flush();
  }
}

const GimpPlugInInfo PLUG_IN_INFO = {nullptr, nullptr, query, run};

MAIN()
