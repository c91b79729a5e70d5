// A GTK 4 window that converts what is typed, and follows the other processes of the store.
#include <fexora/fexora.h>
#include <gtk/gtk.h>

using namespace fexora;

static void show(GtkEditable* entry, gpointer label) {
  const auto dollar = currencyManager().currencyForCode("USD");
  std::string lines;
  const auto converted = rateManager().convertAmount(gtk_editable_get_text(entry), dollar, false);
  for (const auto& item : converted.first.items()) lines += item.description() + "\n";
  gtk_label_set_text(GTK_LABEL(label), lines.c_str());
  storeManager().startSyncTimer();  // one save, a second after the last key
}

static void activate(GtkApplication* application, gpointer) {
  GtkWidget* window = gtk_application_window_new(application);
  GtkWidget* box = gtk_box_new(GTK_ORIENTATION_VERTICAL, 12);
  GtkWidget* entry = gtk_entry_new();
  GtkWidget* label = gtk_label_new("");
  gtk_box_append(GTK_BOX(box), entry);
  gtk_box_append(GTK_BOX(box), label);
  gtk_window_set_child(GTK_WINDOW(window), box);
  g_signal_connect(entry, "changed", G_CALLBACK(show), label);
  storeManager().setReconcilesAfterSkip(true);  // misses nothing around its own saves
  seedBundledRates(storeManager());
  const auto refresh = [entry, label] {
    rateManager().loadRates(storeManager().loadCurrencies(),
                            [=](bool, const ResponseError*) { show(GTK_EDITABLE(entry), label); });
  };
  refresh();
  static const auto token =
      NotificationCenter::defaultCenter().addObserver(fileWatcherUpdate, refresh);
  gtk_window_present(GTK_WINDOW(window));
}

int main(int count, char** words) {
  Log::setProcessSink(
      [](std::string_view line) { g_debug("%.*s", int(line.size()), line.data()); });
  GtkApplication* application = gtk_application_new("org.example.Host", G_APPLICATION_NON_UNIQUE);
  g_signal_connect(application, "activate", G_CALLBACK(activate), nullptr);
  return g_application_run(G_APPLICATION(application), count, words);
}
