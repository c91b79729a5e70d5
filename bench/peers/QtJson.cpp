// QJsonDocument, with a record made of each rate.
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "bench/support/Peers.h"

namespace fexora::bench {
namespace {

struct Record {
  QString code;
  double rate;
};

const Peers<AnswerJob> json([](Race& race, const AnswerJob& job) {
  const QByteArray text = QByteArray::fromStdString(job.text);
  race.add("QJsonDocument", [text] {
    std::vector<std::shared_ptr<Record>> records;
    const QJsonArray rates = QJsonDocument::fromJson(text).object()["rates"].toArray();
    for (const QJsonValue& value : rates) {
      const QJsonObject rate = value.toObject();
      records.push_back(
          std::make_shared<Record>(Record{rate["code"].toString(), rate["rate"].toDouble()}));
    }
    return records.back()->rate;
  });
});

}  // namespace
}  // namespace fexora::bench
