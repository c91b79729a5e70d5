#include "fexora/c.h"

#include "c/Session.h"
#include "c/calls/Checked.h"

using namespace fexora::c;

const char* fexora_version(void) {
  return FEXORA_VERSION;
}

int fexora_c_revision(void) {
  return FEXORA_C_REVISION;
}

int fexora_open(const char* folder, uint32_t flags, fexora_session** session, fexora_error* error) {
  return answered(error, [&] {
    if (session == nullptr) return misuse("no place for the session");
    std::unique_ptr<fexora_session> made;
    Outcome outcome = fexora_session::open(folder, flags, made);
    if (outcome.isOk()) *session = made.release();
    return outcome;
  });
}

void fexora_close(fexora_session* session) {
  // What a child would end is its parent's.
  if (session == nullptr || !session->isOfThisProcess()) return;
  delete session;
}

int fexora_set_log(fexora_session* session, void (*line)(void* data, const char* text), void* data,
                   fexora_error* error) {
  return withSession(session, error, [&] {
    session->log().setTaker(line, data);
    return Outcome();
  });
}

int fexora_descriptor(fexora_session* session) {
  return session != nullptr && session->isOfThisProcess() ? session->descriptor() : -1;
}

int fexora_look(fexora_session* session, int* changed, fexora_error* error) {
  return withSession(session, error, [&] {
    const bool isChanged = session->look();
    if (changed != nullptr) *changed = isChanged ? 1 : 0;
    return Outcome();
  });
}

int fexora_selection(fexora_session* session, const char** codes, size_t capacity, size_t* count,
                     fexora_error* error) {
  return withSession(session, error,
                     [&] { return giveCodes(session->selection(), codes, capacity, count); });
}

int fexora_show(fexora_session* session, double amount, const char* code, fexora_error* error) {
  return withSession(session, error, [&] {
    std::uint32_t place = 0;
    Outcome outcome = Codes::all().find(code, place);
    if (outcome.isOk()) outcome = session->show(amount, Codes::all().record(place));
    return outcome;
  });
}
