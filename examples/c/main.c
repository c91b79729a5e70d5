/* Converts an amount as it is typed: convert '100 usd' EUR JPY */
#include <fexora/c.h>
#include <math.h>
#include <stdio.h>

static int fail(const fexora_error* error) {
  fprintf(stderr, "convert: %s\n", error->message);
  return 1;
}

int main(int count, char** words) {
  fexora_error error;
  fexora_reading typed;
  if (count < 3) {
    fprintf(stderr, "usage: convert AMOUNT CODE...\n");
    return 2;
  }
  if (fexora_read(words[1], NULL, &typed, sizeof typed, &error) != FEXORA_OK) return fail(&error);
  if (!isnan(typed.other)) fprintf(stderr, "read as %g, not as %g\n", typed.amount, typed.other);

  fexora_session* session;
  if (fexora_open(NULL, 0, &session, &error) != FEXORA_OK) return fail(&error);
  const char* source = typed.from != NULL ? typed.from : "USD";
  int status = 0;
  for (int i = 2; i < count; ++i) {
    double result;
    if (fexora_convert(session, typed.amount, source, words[i], &result, &error) == FEXORA_OK) {
      printf("%.2f %s\n", result, words[i]);
    } else {
      status = fail(&error);
    }
  }
  fexora_close(session);
  return status;
}
