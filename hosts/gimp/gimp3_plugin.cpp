// The plug-in for GIMP 3.

#include <gegl.h>

#include <cstring>

#include "hosts/gimp/gimp_run.h"

constexpr char kAuthor[] = "The authors of Morvalis";
constexpr char kYear[] = "2026";

struct MorvalisPlugIn {
  GimpPlugIn parent;
};
struct MorvalisPlugInClass {
  GimpPlugInClass parent;
};
static GType morvalis_plug_in_get_type();
G_DEFINE_TYPE(MorvalisPlugIn, morvalis_plug_in, GIMP_TYPE_PLUG_IN)

// X11's windows have numbers; what other systems give stands for something else.
static uint64_t windowOfGimp() {
  if (g_getenv("WAYLAND_DISPLAY") != nullptr) return 0;
  GBytes* handle = gimp_progress_get_window_handle();
  if (handle == nullptr) return 0;
  uint64_t number = 0;
  gsize size = 0;
  const void* bytes = g_bytes_get_data(handle, &size);
  if (size == sizeof(number)) std::memcpy(&number, bytes, size);
  g_bytes_unref(handle);
  return number;
}

static std::string textOf(GimpProcedureConfig* config, const char* name) {
  char* text = nullptr;
  g_object_get(config, name, &text, nullptr);
  const std::string copy = text == nullptr ? "" : text;
  g_free(text);
  return copy;
}

static GimpAnswer runOn(GimpRunMode mode, GimpDrawable** drawables, GimpProcedureConfig* config) {
  if (drawables == nullptr || drawables[0] == nullptr || drawables[1] != nullptr) {
    return {CallEnd::wrongCall, "choose one layer"};
  }
  GimpCall call;
  call.drawable = drawables[0];
  if (mode == GIMP_RUN_INTERACTIVE) {
    call.window = windowOfGimp();
  } else if (mode == GIMP_RUN_WITH_LAST_VALS) {
    call.manner = CallManner::byLastValues;
  } else {
    call.manner = CallManner::byArguments;
    call.preset = textOf(config, "preset");
    call.settings = textOf(config, "settings");
    gint seed = -1;
    g_object_get(config, "seed", &seed, nullptr);
    call.seed = seed;
  }
  return runInGimp(call);
}

static GimpValueArray* run(GimpProcedure* procedure, GimpRunMode mode, GimpImage*,
                           GimpDrawable** drawables, GimpProcedureConfig* config, gpointer) {
  gegl_init(nullptr, nullptr);
  const GimpAnswer answer = runOn(mode, drawables, config);
  GError* error = answer.text.empty() ? nullptr
                                      : g_error_new_literal(g_quark_from_static_string("morvalis"),
                                                            0, answer.text.c_str());
  if (answer.end == CallEnd::done && mode != GIMP_RUN_NONINTERACTIVE) gimp_displays_flush();
  return gimp_procedure_new_return_values(procedure, statusOf(answer.end), error);
}

static GList* queryProcedures(GimpPlugIn*) {
  return g_list_append(nullptr, g_strdup(kProcedure));
}

static GimpProcedure* createProcedure(GimpPlugIn* plugIn, const gchar* name) {
  if (g_strcmp0(name, kProcedure) != 0) return nullptr;
  GimpProcedure* procedure =
      gimp_image_procedure_new(plugIn, name, GIMP_PDB_PROC_TYPE_PLUGIN, run, nullptr, nullptr);
  gimp_procedure_set_image_types(procedure, kImageTypes);
  gimp_procedure_set_sensitivity_mask(procedure, GIMP_PROCEDURE_SENSITIVE_DRAWABLE);
  gimp_procedure_set_menu_label(procedure, kMenuLabel);
  gimp_procedure_add_menu_path(procedure, kMenuPath);
  gimp_procedure_set_icon_name(procedure, kIconName);
  gimp_procedure_set_documentation(procedure, kBlurb, kHelp, nullptr);
  gimp_procedure_set_attribution(procedure, kAuthor, kAuthor, kYear);
  gimp_procedure_add_string_argument(procedure, "preset", "Preset", kPresetHelp, "",
                                     G_PARAM_READWRITE);
  gimp_procedure_add_string_argument(procedure, "settings", "Settings", kSettingsHelp, "",
                                     G_PARAM_READWRITE);
  gimp_procedure_add_int_argument(procedure, "seed", "Seed", kSeedHelp, -1, G_MAXINT, -1,
                                  G_PARAM_READWRITE);
  return procedure;
}

// The words are English, as in the dialog.
static gboolean setLanguage(GimpPlugIn*, const gchar*, gchar**, gchar**) {
  return FALSE;
}

static void morvalis_plug_in_class_init(MorvalisPlugInClass* kind) {
  GimpPlugInClass* plugIn = GIMP_PLUG_IN_CLASS(kind);
  plugIn->query_procedures = queryProcedures;
  plugIn->create_procedure = createProcedure;
  plugIn->set_i18n = setLanguage;
}

static void morvalis_plug_in_init(MorvalisPlugIn*) {
}

GIMP_MAIN(morvalis_plug_in_get_type())
