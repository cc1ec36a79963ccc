#include "ZNTSpeechDispatcher.h"
