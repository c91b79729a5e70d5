// bench_empty_window [field]: an empty window of the toolkit of ours, with a text field if asked
// for: the least that a window of that toolkit takes.
#include <QApplication>
#include <QLineEdit>
#include <QMainWindow>

int main(int count, char** words) {
  QApplication application(count, words);
  QMainWindow window;
  window.resize(400, 600);
  if (count > 1) window.setCentralWidget(new QLineEdit(QStringLiteral("100")));
  window.show();
  return QApplication::exec();
}
