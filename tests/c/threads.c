/* Everything at once on one session: for the thread sanitizer. threads_c FOLDER RATES */
#define _POSIX_C_SOURCE 200809L
#include <fexora/c.h>
#include <pthread.h>
#include <stdint.h>
#include <stdio.h>

enum { kThreads = 6, kRounds = 40 };
static fexora_session* session;
static const char* rates;

static void drop(void* data, const char* text) {
  (void)data;
  (void)text;
}

static void* use(void* number) {
  intptr_t wrong = 0, turn = (intptr_t)number;
  for (int i = 0; i < kRounds; ++i, ++turn) {
    double result = 0;
    int changed = 0;
    size_t count = 0;
    fexora_freshness freshness;
    const char* code = NULL;
    wrong += fexora_convert(session, 1, "USD", "EUR", &result, NULL) != FEXORA_OK || result <= 0;
    if (turn % 8 == 0) wrong += fexora_refresh(session, rates, 0, NULL) % FEXORA_CANCELLED != 0;
    if (turn % 8 == 1) wrong += fexora_look(session, &changed, NULL) != FEXORA_OK;
    if (turn % 8 == 2)
      wrong += fexora_get_freshness(session, &freshness, sizeof freshness, NULL) != FEXORA_OK;
    if (turn % 8 == 3) wrong += fexora_show(session, 1, "EUR", NULL) != FEXORA_OK;
    if (turn % 8 == 4) wrong += fexora_set_log(session, drop, NULL, NULL) != FEXORA_OK;
    if (turn % 8 == 5)
      wrong += fexora_convert(session, 1, "EURO", "USD", &result, NULL) != FEXORA_NO_CURRENCY;
    if (turn % 8 == 6) wrong += fexora_selection(session, &code, 1, &count, NULL) != FEXORA_OK;
    if (turn % 64 == 7) fexora_cancel(session);
  }
  return (void*)wrong;
}

int main(int count, char** words) {
  pthread_t threads[kThreads];
  intptr_t wrong = 0;
  if (count != 3) return 2;
  rates = words[2];
  if (fexora_open(words[1], FEXORA_WRITABLE | FEXORA_ANY_RATES, &session, NULL) != FEXORA_OK)
    return 3;
  for (intptr_t i = 0; i < kThreads; ++i) pthread_create(&threads[i], NULL, use, (void*)i);
  for (int i = 0; i < kThreads; ++i) {
    void* result = NULL;
    pthread_join(threads[i], &result);
    wrong += (intptr_t)result;
  }
  fexora_close(session);
  if (wrong != 0) fprintf(stderr, "%d calls went wrong\n", (int)wrong);
  return wrong != 0;
}
