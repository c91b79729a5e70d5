// Marks what the shared library exports; everything else stays hidden.
#pragma once

#define FEXORA_API __attribute__((visibility("default")))
