#pragma once

#include "ZNTSettings.h"
#include "ZNTStream.h"

class ZNTDatabaseHelper;
class ZNTScreenReader;
class ZNTSoundFactory;
class ZNTSpeechEngine;
struct ZNTPlatform;

/// What the window needs of the rest of the program, made at start-up; all of it outlives the window.
struct ZNTWindowServices {
    const ZNTPlatform& platform;
    ZNTDatabaseHelper& database;
    ZNTSoundFactory& sounds;
    ZNTSpeechEngine& speechEngine;
    ZNTScreenReader& screenReader;
    ZNTStreamFactory streams;
    ZNTSettingValues settingsOfCommandLine = {};
};
