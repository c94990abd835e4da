#include "documents/c/json.h"
