/* The C library as a stranger's program meets it: results, limits, and what would crash or hang it.
   test_c FOLDER RATES runs all; test_c exit ends the process while another thread waits for an
   answer; test_c sizes prints those of the structs. */
#define _POSIX_C_SOURCE 200809L
#include <arpa/inet.h>
#include <fexora/c.h>
#include <math.h>
#include <poll.h>
#include <pthread.h>
#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

static int failures, server;
static fexora_error failure;
#define CHECK(what) \
  ((what)           \
       ? (void)0    \
       : (void)(++failures, fprintf(stderr, "%d: %s (%s)\n", __LINE__, #what, failure.message)))
#define OK(call) CHECK((call) == FEXORA_OK)
#define FAILS(code, call) CHECK((call) == (code))

static fexora_session* session_on(const char* folder, uint32_t flags) {
  fexora_session* session = NULL;
  OK(fexora_open(folder, flags, &session, &failure));
  return session;
}

/* "http://127.0.0.1:PORT/" of a server that takes connections and never answers. */
static const char* silent_server(void) {
  static char address[64];
  struct sockaddr_in at;
  socklen_t size = sizeof at;
  server = socket(AF_INET, SOCK_STREAM, 0);
  memset(&at, 0, sizeof at);
  at.sin_family = AF_INET;
  at.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  CHECK(bind(server, (struct sockaddr*)&at, sizeof at) == 0 && listen(server, 16) == 0);
  CHECK(getsockname(server, (struct sockaddr*)&at, &size) == 0);
  sprintf(address, "http://127.0.0.1:%d/", ntohs(at.sin_port));
  return address;
}

static void conversions(void) {
  static const char* const to[] = {"EUR", "usd", "XTS"};
  fexora_session* s = session_on("", 0);
  double rate = 0, day = 0, results[3] = {100, 200, NAN};
  OK(fexora_rate(s, "USD", "eur", &rate, &day, &failure));
  CHECK(rate > 0.5 && rate < 2 && day > 1.7e9);
  OK(fexora_convert_amounts(s, results, 3, "usd", "EUR", results, &failure));
  CHECK(results[0] == 100 * rate && results[1] == 200 * rate && isnan(results[2]));
  OK(fexora_convert_to(s, 2, "USD", to, 2, results, &failure));
  CHECK(results[0] == 2 * rate && results[1] == 2);
  OK(fexora_convert(s, 1, "EUR", "DEM", results, &failure));
  CHECK(fabs(results[0] - 1.95583) < 1e-9); /* fixed by law */
  FAILS(FEXORA_NO_CURRENCY, fexora_convert(s, 1, "GBp", "GBP", results, &failure));
  CHECK(strstr(failure.message, "hundredths") != NULL);
  FAILS(FEXORA_NO_CURRENCY, fexora_rate(s, "dollar", "EUR", &rate, NULL, &failure));
  CHECK(failure.code == FEXORA_NO_CURRENCY && strstr(failure.message, "USD") != NULL);
  FAILS(FEXORA_MISUSE, fexora_rate(s, NULL, "EUR", &rate, NULL, NULL));
  FAILS(FEXORA_MISUSE, fexora_rate(NULL, "USD", "EUR", &rate, NULL, &failure));
  fexora_close(s);
  fexora_close(NULL);
}

static void rates_and_structs(const char* file) {
  static const char *const codes[] = {"eur", "CHF"}, *const unknown[] = {"EUR", "QQQ"};
  static const double wild[] = {50, 0.25};
  static const double rates[] = {0.5, 0.25}, odd[] = {0.5, INFINITY};
  fexora_session *s = session_on("", 0), *any = session_on("", FEXORA_ANY_RATES);
  struct {
    fexora_freshness freshness;
    unsigned char after[8];
  } room;
  double rate = 0, day = 0;
  size_t count = 0;
  const char* first[2] = {NULL, NULL};
  FAILS(FEXORA_REFUSED, fexora_set_rates(s, codes, wild, 2, NAN, NULL, &failure));
  FAILS(FEXORA_REFUSED, fexora_set_rates(any, codes, odd, 2, NAN, NULL, &failure));
  FAILS(FEXORA_NO_CURRENCY, fexora_set_rates(any, unknown, rates, 2, NAN, NULL, &failure));
  OK(fexora_set_rates(any, codes, rates, 2, 1.78e9, "till", &failure));
  OK(fexora_rate(any, "CHF", "EUR", &rate, NULL, &failure));
  CHECK(rate == 2);
  memset(&room, 0x5a, sizeof room);
  OK(fexora_get_freshness(any, &room.freshness, 8, &failure)); /* of an older header */
  CHECK(room.freshness.origin == FEXORA_ORIGIN_FILE && room.freshness.count == 0x5a5a5a5a);
  OK(fexora_get_freshness(any, &room.freshness, sizeof room, &failure)); /* of a later one */
  CHECK(room.freshness.published == 1.78e9 && strcmp(room.freshness.source, "till") == 0);
  CHECK(room.after[0] == 0 && room.after[7] == 0);
  OK(fexora_codes(any, first, 1, &count, &failure));
  CHECK((size_t)room.freshness.count == count && count > 2 && first[0] != NULL && first[1] == NULL);
  OK(fexora_read_rates(any, "\xEF\xBB\xBF{\"usd\":{\"eur\":0.7}}", 22, &failure));
  FAILS(FEXORA_REFUSED, fexora_read_rates(any, "EUR,0.8\033\n", 9, &failure));
  CHECK(strpbrk(failure.message, "\033\n") == NULL);
  OK(fexora_read_rates(any, "code,rate\nEUR,0.8\n", 18, &failure));
  OK(fexora_rate(any, "USD", "EUR", &rate, NULL, &failure));
  CHECK(rate == 0.8);
  OK(fexora_rate(any, "USD", "EUR", &rate, &day, &failure));
  CHECK(isnan(day)); /* the text does not say */
  FAILS(FEXORA_REFUSED, fexora_read_rates(any, "{", 1, &failure));
  FAILS(FEXORA_NETWORK, fexora_refresh(any, "/nowhere", 0, &failure));
  FAILS(FEXORA_MISUSE, fexora_refresh(any, "", 0, &failure));
  OK(fexora_refresh(any, file, 0, &failure));
  OK(fexora_codes(any, NULL, 0, &count, &failure));
  CHECK(count > 100);
  fexora_close(s);
  fexora_close(any);
}

static void past_days(const char* folder) {
  fexora_session* s = session_on(folder, 0);
  fexora_past past;
  /* A Sunday: Friday's table, figure by figure. */
  OK(fexora_rate_on(s, "2024-03-03", "EUR", "usd", NULL, -1, &past, sizeof past, &failure));
  CHECK(past.rate == 1.0813 && past.how == FEXORA_HOW_PRINTED);
  CHECK(strcmp(past.day, "2024-03-01") == 0 && strcmp(past.source, "ecb") == 0);
  FAILS(FEXORA_NO_RATE,
        fexora_rate_on(s, "2024-03-03", "EUR", "USD", NULL, 1, &past, sizeof past, &failure));
  FAILS(FEXORA_NO_RATE,
        fexora_rate_on(s, "2024-03-01", "EUR", "USD", "boe", -1, &past, sizeof past, &failure));
  FAILS(FEXORA_MISUSE,
        fexora_rate_on(s, "yesterday", "EUR", "USD", NULL, -1, &past, sizeof past, &failure));
  fexora_close(s);
}

static int is_told(fexora_session* s) {
  struct pollfd wait = {0, POLLIN, 0};
  int changed = 0;
  wait.fd = fexora_descriptor(s);
  while (!changed && poll(&wait, 1, 60000) == 1) OK(fexora_look(s, &changed, &failure));
  return changed;
}

static int child_of(fexora_session* s) {
  double result = 0;
  int wrong = fexora_convert(s, 1, "USD", "EUR", &result, NULL) != FEXORA_MISUSE;
  fexora_session* own = NULL;
  fexora_close(s);
  wrong += fexora_open("", 0, &own, NULL) != FEXORA_OK;
  wrong += fexora_convert(own, 1, "USD", "EUR", &result, NULL) != FEXORA_OK;
  fexora_close(own);
  return wrong;
}

static void two_processes(const char* folder) {
  static const char* const codes[] = {"EUR"};
  double rate = 0.8, found = 0;
  int status = 1;
  fexora_session *reader = session_on(folder, 0), *writer;
  CHECK(access(folder, F_OK) != 0); /* reading makes nothing */
  FAILS(FEXORA_MISUSE, fexora_show(reader, 1, "USD", &failure));
  writer = session_on(folder, FEXORA_WRITABLE | FEXORA_ANY_RATES);
  OK(fexora_set_rates(writer, codes, &rate, 1, NAN, NULL, &failure));
  while (found != rate && is_told(reader))
    OK(fexora_rate(reader, "USD", "EUR", &found, NULL, &failure));
  CHECK(found == rate);
  const pid_t child = fork();
  if (child == 0) _exit(child_of(reader));
  CHECK(waitpid(child, &status, 0) == child && status == 0);
  OK(fexora_show(writer, 3, "eur", &failure));
  CHECK(is_told(reader)); /* the child has ended nothing of the parent's */
  FAILS(FEXORA_STORE, fexora_open("/dev/null", FEXORA_WRITABLE, &reader, &failure));
  FAILS(FEXORA_MISUSE, fexora_open("relative", 0, &reader, &failure));
  FAILS(FEXORA_MISUSE, fexora_open("", 128, &reader, &failure));
  fexora_close(writer);
  fexora_close(reader);
}

static fexora_session* refreshed;
static void cancel_it(int number) {
  (void)number;
  fexora_cancel(refreshed);
}
static void* refresh_it(void* address) {
  return (void*)(intptr_t)fexora_refresh(refreshed, (const char*)address, 0, NULL);
}

static void silence(void) {
  char* address = (char*)silent_server();
  struct sigaction action;
  struct itimerval soon = {{0, 20000}, {0, 20000}}, never = {{0, 0}, {0, 0}};
  double result = 0;
  refreshed = session_on("", 0);
  FAILS(FEXORA_TIMEOUT, fexora_refresh(refreshed, address, 0.05, &failure));
  fexora_cancel(refreshed); /* nothing is under way: lost */
  FAILS(FEXORA_TIMEOUT, fexora_refresh(refreshed, address, 0.05, &failure));
  memset(&action, 0, sizeof action);
  action.sa_handler = cancel_it;
  sigaction(SIGALRM, &action, NULL);
  setitimer(ITIMER_REAL, &soon, NULL);
  FAILS(FEXORA_CANCELLED, fexora_refresh(refreshed, address, 0, &failure));
  /* From another thread, while this one converts: cancelled by whichever alarm comes. */
  pthread_t thread;
  void* code = NULL;
  pthread_create(&thread, NULL, refresh_it, address);
  OK(fexora_convert(refreshed, 1, "USD", "EUR", &result, &failure));
  pthread_join(thread, &code);
  CHECK((intptr_t)code == FEXORA_CANCELLED);
  setitimer(ITIMER_REAL, &never, NULL);
  fexora_close(refreshed);
}

static void count_line(void* data, const char* text) {
  *(int*)data += text[0] != '\0';
}

static void texts(void) {
  char text[64] = "", small[3] = "";
  const char* found[1] = {NULL};
  size_t length = 0;
  double rounded = 0;
  int lines = 0;
  fexora_reading reading;
  fexora_facts facts;
  OK(fexora_name("chf", "de", text, sizeof text, &length, &failure));
  CHECK(strcmp(text, "Schweizer Franken") == 0 && length == strlen(text));
  OK(fexora_name("JPY", "ja", small, sizeof small, &length, &failure));
  CHECK(small[0] == '\0' && length > 3); /* no half of a character */
  OK(fexora_format(-1234.5, 2, 1, "de_DE", text, sizeof text, NULL, &failure));
  CHECK(strcmp(text, "-1.234,50") == 0);
  OK(fexora_round(1.025, "CHF", FEXORA_ROUND_CASH, &rounded, &failure));
  CHECK(rounded == 1.05);
  OK(fexora_get_facts("dem", &facts, sizeof facts, &failure));
  CHECK(facts.kind == FEXORA_KIND_WITHDRAWN && strcmp(facts.successor, "EUR") == 0);
  CHECK(facts.units == 1.95583 * facts.successor_units);
  OK(fexora_search("swiss", found, 1, &length, &failure));
  CHECK(length >= 1 && strcmp(found[0], "CHF") == 0);
  OK(fexora_read("1,234 \xe2\x82\xac", "de_DE", &reading, sizeof reading, &failure));
  CHECK(reading.amount == 1.234 || reading.other == 1.234);
  CHECK(strcmp(reading.from, "EUR") == 0 && reading.to_count == 0);
  OK(fexora_read("12+3*2 euros in yen and chf", "C", &reading, sizeof reading, &failure));
  CHECK(reading.amount == 18 && strcmp(reading.from, "EUR") == 0 && reading.to_count == 2);
  CHECK(strcmp(reading.to[0], "JPY") == 0 && strcmp(reading.to[1], "CHF") == 0);
  FAILS(FEXORA_NO_AMOUNT, fexora_read("1..2", NULL, &reading, sizeof reading, &failure));
  fexora_session* s = session_on("/tmp/there/is/no/such/folder", 0);
  OK(fexora_set_log(s, count_line, &lines, &failure));
  CHECK(lines > 0); /* the first ones were kept */
  fexora_close(s);
}

/* Refreshes the person's own store from each word ("" is null) in so many seconds. */
static int refresh_from(int count, char** words) {
  fexora_session* s = session_on(NULL, FEXORA_WRITABLE);
  fexora_freshness fresh;
  double rate = 0;
  for (int i = 3; i < count; ++i) {
    const int code = fexora_refresh(s, *words[i] ? words[i] : NULL, atof(words[2]), &failure);
    OK(fexora_get_freshness(s, &fresh, sizeof fresh, &failure));
    OK(fexora_rate(s, "USD", "EUR", &rate, NULL, &failure));
    printf("%d %s %.17g\n", code, fresh.source, rate);
  }
  fexora_close(s);
  return failures;
}

int main(int count, char** words) {
  char store[4096];
  pthread_t thread;
  if (count == 2 && strcmp(words[1], "exit") == 0) {
    refreshed = session_on("", 0);
    pthread_create(&thread, NULL, refresh_it, (void*)silent_server());
    return accept(server, NULL, NULL) >= 0 ? 0 : 1; /* it waits for an answer by now */
  }
  if (count == 2 && strcmp(words[1], "sizes") == 0) {
    return printf("%d %d %d %d %d\n", (int)sizeof(fexora_error), (int)sizeof(fexora_freshness),
                  (int)sizeof(fexora_reading), (int)sizeof(fexora_facts),
                  (int)sizeof(fexora_past)) < 0;
  }
  if (count > 3 && strcmp(words[1], "refresh") == 0) return refresh_from(count, words);
  if (count != 3) return 2;
  CHECK(fexora_c_revision() >= FEXORA_C_REVISION && strlen(fexora_version()) >= 5);
  snprintf(store, sizeof store, "%s/a/store", words[1]);
  conversions();
  rates_and_structs(words[2]);
  past_days(words[1]);
  two_processes(store);
  silence();
  texts();
  return failures == 0 ? 0 : 1;
}
