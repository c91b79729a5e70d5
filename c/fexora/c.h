/* The C interface of Fexora: currency conversion offline, for C and for what binds to C.
 *
 * Every function returns FEXORA_OK or the code of a failure, unless it says otherwise. Where the
 * last parameter is a fexora_error, a failure fills it (null: nobody wants to know); success leaves
 * it as it was. A failure leaves every other out parameter as it was.
 *
 * Texts are UTF-8 and end with a zero. A `const char *` that comes out, alone or in a struct, lives
 * to the end of the process and is nobody's to free. Codes go in in any case ("usd"), but for
 * "GBp", which is pence and no code; they come out as the catalogue has them.
 *
 * Nothing is thrown and nothing aborts. The signals, the locale and the environment of the process
 * stay as they are, and so do its standard streams, but for a line on standard error where a part
 * of the library is missing.
 *
 * Threads: any function on any thread, several at once, also on one session; fexora_close() must be
 * the last call on its session. A session is of the process that opened it: in a child of fork()
 * its calls fail with FEXORA_MISUSE, and fexora_close() does nothing. The child opens its own,
 * which is safe unless another thread was inside this library at the moment of the fork: then it
 * may wait for ever for what that thread held.
 *
 * A struct comes with its size as the caller knows it: a later library fills that much of it, and
 * an older one sets the fields that it does not know to zero.
 */
#ifndef FEXORA_C_H
#define FEXORA_C_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* What this header knows. It grows with each addition; under one SONAME nothing is taken away. */
#define FEXORA_C_REVISION 1

#if defined(__GNUC__)
#define FEXORA_C_API __attribute__((visibility("default")))
#else
#define FEXORA_C_API
#endif

/* Codes of failures. More may come. */
enum fexora_code {
  FEXORA_OK = 0,
  FEXORA_MISUSE = 1, /* a null pointer, a value out of range, a session of another process, or one
                        that may not be written */
  FEXORA_NO_MEMORY = 2,
  FEXORA_NO_AMOUNT = 3,   /* the text is no amount */
  FEXORA_NO_CURRENCY = 4, /* there is no such currency; the message names those near */
  FEXORA_NO_RATE = 5,     /* of a currency that there is */
  FEXORA_STORE = 6,       /* the folder cannot be used, or the file was not written */
  FEXORA_NETWORK = 7,     /* no answer came, or the file of rates cannot be read */
  FEXORA_TIMEOUT = 8,
  FEXORA_CANCELLED = 9,
  FEXORA_REFUSED = 10, /* rates came and were not taken: unreadable, or not plausible */
  FEXORA_INTERNAL = 99
};

typedef struct fexora_session fexora_session;

/* This struct never grows. */
typedef struct fexora_error {
  int32_t code;
  char message[252]; /* one line for people, in English, cut where it is longer */
} fexora_error;

/* "0.1.0", and the revision of this interface: a caller that needs a function of revision n asks
 * for at least n. */
FEXORA_C_API const char* fexora_version(void);
FEXORA_C_API int fexora_c_revision(void);

/* -- Sessions ---------------------------------------------------------------------------------- */

enum fexora_flag {
  FEXORA_WRITABLE =
      1, /* may make and write the store; without it nothing is ever made or written */
  FEXORA_ANY_RATES = 2 /* takes rates that do not look plausible, too */
};

/* A session on the store in `folder` (absolute). Null: the person's own store, which the windows
 * and the program share; "": none, all in memory. Without rates there the session has those that
 * come with the library. FEXORA_STORE where a folder that was named, or that is to be written,
 * cannot be used; one that is not there yet is no failure. `flags`: of enum fexora_flag. */
FEXORA_C_API int fexora_open(const char* folder, uint32_t flags, fexora_session** session,
                             fexora_error* error);
/* No other call may be under way on it, nor come after. Null: nothing. */
FEXORA_C_API void fexora_close(fexora_session* session);
/* Takes each line of the session's log, the first ones of fexora_open() at once; null: nobody does,
 * as at the beginning. Called on whichever thread uses the session; it may not call this library.
 */
FEXORA_C_API int fexora_set_log(fexora_session* session, void (*line)(void* data, const char* text),
                                void* data, fexora_error* error);

/* -- Conversions ------------------------------------------------------------------------------- */

/* How many units of `to` one unit of `from` buys, and (null: not asked) the day of the rates as
 * seconds since 1970, not-a-number where it is not known. By the session's rates where these have
 * both, and by the law's ratios for withdrawn currencies; else by the older ones that the store
 * keeps beside, and by those that come with the library, the newest first. No rate mixes two days
 * or two sources. Of a currency in itself it is 1. */
FEXORA_C_API int fexora_rate(fexora_session* session, const char* from, const char* to,
                             double* rate, double* published, fexora_error* error);
/* amount × rate in doubles, nothing rounded and nothing recorded; infinite and not-a-number go
 * through. */
FEXORA_C_API int fexora_convert(fexora_session* session, double amount, const char* from,
                                const char* to, double* result, fexora_error* error);
/* `count` amounts by one rate; `results` may be `amounts`. */
FEXORA_C_API int fexora_convert_amounts(fexora_session* session, const double* amounts,
                                        size_t count, const char* from, const char* to,
                                        double* results, fexora_error* error);
/* One amount in `count` currencies, all by one state of the rates; not-a-number for one without a
 * rate. */
FEXORA_C_API int fexora_convert_to(fexora_session* session, double amount, const char* from,
                                   const char* const* to, size_t count, double* results,
                                   fexora_error* error);

enum fexora_how {
  FEXORA_HOW_PRINTED, /* the source's own figure, or one divided by it */
  FEXORA_HOW_CROSSED, /* two figures of one table */
  FEXORA_HOW_BY_LAW   /* by the fixed ratio of a withdrawn currency */
};

typedef struct fexora_past {
  double rate;
  int32_t how;      /* enum fexora_how */
  int32_t reserved; /* 0 */
  char day[12];     /* of the rate: the day that was asked for, or the newest one before it */
  char source[52];  /* who published it: "ecb" */
} fexora_past;

/* The rate of a past day ("2024-02-29"), out of the history that is kept beside the store (see
 * fexora_refresh() and, for the years before, `fexora refresh --history`); a session in memory has
 * none. `source`: whose rates count ("ecb", "exchange-api"), or null for all. `at_most_before`: how
 * many days the rate may be older; below zero the usual seven, since nobody publishes on holidays.
 * FEXORA_NO_RATE where there is none, FEXORA_STORE where the history cannot be read. May wait for
 * the disk. */
FEXORA_C_API int fexora_rate_on(fexora_session* session, const char* day, const char* from,
                                const char* to, const char* source, int at_most_before,
                                fexora_past* past, size_t size, fexora_error* error);

/* -- Rates ------------------------------------------------------------------------------------- */

enum fexora_origin {
  FEXORA_ORIGIN_NONE,
  FEXORA_ORIGIN_BUNDLED,
  FEXORA_ORIGIN_SERVICE,
  FEXORA_ORIGIN_FILE /* a file, another address, or the caller */
};
enum fexora_state {
  FEXORA_STATE_NONE,
  FEXORA_STATE_FRESH, /* of today, or of the last working day */
  FEXORA_STATE_STALE, /* rates of an unknown day, too, however new they look */
  FEXORA_STATE_OLD    /* a week or more, or nobody knows */
};

typedef struct fexora_freshness {
  int32_t state;    /* enum fexora_state, now */
  int32_t origin;   /* enum fexora_origin */
  int32_t count;    /* of currencies with a rate */
  int32_t reserved; /* 0 */
  double published; /* seconds since 1970, or not-a-number */
  double stored;
  char source[64]; /* the rates' own name for where they are from, or empty */
} fexora_freshness;

FEXORA_C_API int fexora_get_freshness(fexora_session* session, fexora_freshness* freshness,
                                      size_t size, fexora_error* error);
/* The codes of the session's rates, those by law's ratios included: fills the first `capacity`, and
 * `count` says how many there are. */
FEXORA_C_API int fexora_codes(fexora_session* session, const char** codes, size_t capacity,
                              size_t* count, fexora_error* error);
/* Takes `count` rates in place of those that the session has: units that one US dollar buys; the
 * dollar itself may be left out. All are taken or none; FEXORA_NO_CURRENCY when the catalogue does
 * not have a code, FEXORA_REFUSED when one is not finite and above zero or, without
 * FEXORA_ANY_RATES, when they do not look plausible beside those that they replace. A session that
 * may writes them down. `published`: seconds since 1970, or not-a-number. `source`: a name, or
 * null. */
FEXORA_C_API int fexora_set_rates(fexora_session* session, const char* const* codes,
                                  const double* rates, size_t count, double published,
                                  const char* source, fexora_error* error);
/* The same from `size` bytes in a form in which rates are published: JSON, CSV, or the XML of the
 * daily euro reference rates. Codes that the catalogue does not have are left out. */
FEXORA_C_API int fexora_read_rates(fexora_session* session, const char* text, size_t size,
                                   fexora_error* error);
/* The same from a file (its path), an address (http:, https:), the rates service ("service") or a
 * public source by its name ("exchange-api", "ecb"). Null asks as the program and the windows do:
 * whom the store's setting `ratesFrom` names, else the service where one is configured, else the
 * public sources one after the other, until an answer is taken; the failure is the first one's.
 * Waits `seconds` at most, shared among all addresses (0: the library's own bounds for each, which
 * are never exceeded). Conversions go on meanwhile. One refresh a session at a time; a second one
 * waits for its turn. A session that may write keeps what was taken in the history beside its
 * store, too, by the day of the rates; where it cannot, the session's log says so. */
FEXORA_C_API int fexora_refresh(fexora_session* session, const char* from, double seconds,
                                fexora_error* error);
/* Ends each refresh of the session that has begun: it returns FEXORA_CANCELLED. Nothing where none
 * has. Any thread, and a signal's handler. */
FEXORA_C_API void fexora_cancel(fexora_session* session);

/* -- The store --------------------------------------------------------------------------------- */

/* A descriptor that becomes readable when fexora_look() has something to do: for poll, a GSource, a
 * QSocketNotifier, asyncio's add_reader. It is the session's: wait on it, and do nothing else with
 * it. -1 in a child of fork(). */
FEXORA_C_API int fexora_descriptor(fexora_session* session);
/* Takes what other processes have saved by now, without waiting for any. `changed` (or null):
 * whether there was something. Between two looks nobody else changes the rates of a session. */
FEXORA_C_API int fexora_look(fexora_session* session, int* changed, fexora_error* error);
/* The person's chosen currencies, given as by fexora_codes(). */
FEXORA_C_API int fexora_selection(fexora_session* session, const char** codes, size_t capacity,
                                  size_t* count, fexora_error* error);
/* Records the amount as the one that the windows show next; writes the store. */
FEXORA_C_API int fexora_show(fexora_session* session, double amount, const char* code,
                             fexora_error* error);

/* -- Without a session ------------------------------------------------------------------------- */

typedef struct fexora_reading {
  double amount;
  double other;     /* the second reading of "1,234", or not-a-number */
  const char* from; /* null: the text names none */
  const char* to[12];
  uint32_t to_count; /* how many there are; the first twelve are given */
  char day[12];      /* whose rates are asked for ("2024-02-29"), or empty */
} fexora_reading;

/* An amount as people of `locale` (null: the process's) write it, and the currencies that it is of
 * and goes to: "1,234.50", "€5", "100 usd in eur". A number that may be read in two ways has
 * `other`. A sign or a name that several currencies share ("$", "peso") is that of the locale's
 * region, else the most traded one. */
FEXORA_C_API int fexora_read(const char* text, const char* locale, fexora_reading* reading,
                             size_t size, fexora_error* error);

enum fexora_kind {
  FEXORA_KIND_OFFICIAL,
  FEXORA_KIND_LOCAL,
  FEXORA_KIND_METAL,
  FEXORA_KIND_CRYPTO,
  FEXORA_KIND_WITHDRAWN
};

typedef struct fexora_facts {
  int32_t kind;             /* enum fexora_kind */
  int32_t digits;           /* of the minor unit; -1: none */
  int32_t customary_digits; /* that people write; -1: none */
  int32_t
      cash_half_down; /* 1: half a step of cash goes to the smaller amount, else to the larger */
  double cash_step;   /* 0: none, or not known */
  const char* code;
  const char* signs;     /* words parted by blanks, perhaps none */
  const char* regions;   /* the same, of ISO 3166 */
  const char* successor; /* a code, or "" */
  double units;          /* became successor_units of it; 0: no ratio */
  double successor_units;
  const char* last_day; /* "2001-12-31", or "" */
} fexora_facts;

FEXORA_C_API int fexora_get_facts(const char* code, fexora_facts* facts, size_t size,
                                  fexora_error* error);
/* The codes that match a text best, given as by fexora_codes(): by code, sign, name in English and
 * in the process's language, and country. Fifty at most. */
FEXORA_C_API int fexora_search(const char* text, const char** codes, size_t capacity, size_t* count,
                               fexora_error* error);
/* The currency's name in `language` ("de"; null: the process's), the code again where it has none.
 * Written as snprintf() writes, but whole characters: at most `capacity` bytes with the zero, and
 * `length` (or null) says how long it is without. */
FEXORA_C_API int fexora_name(const char* code, const char* language, char* name, size_t capacity,
                             size_t* length, fexora_error* error);

enum fexora_rounding {
  FEXORA_ROUND_HALF_EVEN,
  FEXORA_ROUND_HALF_UP, /* from the middle away from zero */
  FEXORA_ROUND_UP,      /* away from zero */
  FEXORA_ROUND_DOWN,
  FEXORA_ROUND_CASH /* to what can be paid in coins and notes */
};

/* Rounds the decimal that the amount prints as to the currency's minor unit. */
FEXORA_C_API int fexora_round(double amount, const char* code, int mode, double* rounded,
                              fexora_error* error);
/* The amount with `digits` after the decimal mark (0 to 15), rounded half to even, as people of
 * `locale` (null: the process's) write it; given as by fexora_name(). */
FEXORA_C_API int fexora_format(double amount, int digits, int grouping, const char* locale,
                               char* text, size_t capacity, size_t* length, fexora_error* error);

#ifdef __cplusplus
}
#endif

#endif
