#pragma once

#include "ZNTSoundObject.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

/// One accepted request of a game for a sound. Parameters are kept as the tag gives them, or absent.
class ZNTSound
{
public:
    using Parameter = std::optional<std::u16string>;

    /// Kept as part of the interface: the record's path and sound. They are always empty.
    [[nodiscard]] const std::u16string& _soundPath() const { return _soundPath_; }
    [[nodiscard]] const std::shared_ptr<ZNTSoundObject>& _nsSound() const { return _nsSound_; }

    /// Kept as part of the interface: playback looks at the sound's file and counts its rounds itself.
    [[nodiscard]] bool _isSoundFile() const { return _isSoundFile_; }
    void set_isSoundFile(bool isSoundFile) { _isSoundFile_ = isSoundFile; }
    [[nodiscard]] std::int32_t _currentLoopCount() const { return _currentLoopCount_; }
    void set_currentLoopCount(std::int32_t count) { _currentLoopCount_ = count; }

    /// Kept as part of the interface: the path in the sound folder that the tag names. Lookups do not use it.
    [[nodiscard]] const std::u16string& _fName() const { return _fName_; }
    void set_fName(std::u16string name) { _fName_ = std::move(name); }

    /// Volume in percent.
    [[nodiscard]] const Parameter& _vParam() const { return _vParam_; }
    void set_vParam(Parameter value) { _vParam_ = std::move(value); }
    /// Loops: repeats after the first play, -1 for ever.
    [[nodiscard]] const Parameter& _lParam() const { return _lParam_; }
    void set_lParam(Parameter value) { _lParam_ = std::move(value); }
    /// Priority: a higher one cuts in.
    [[nodiscard]] const Parameter& _pParam() const { return _pParam_; }
    void set_pParam(Parameter value) { _pParam_ = std::move(value); }
    /// Continue.
    [[nodiscard]] const Parameter& _cParam() const { return _cParam_; }
    void set_cParam(Parameter value) { _cParam_ = std::move(value); }
    /// Kept as part of the interface: the type (category) of a sound.
    [[nodiscard]] const Parameter& _tParam() const { return _tParam_; }
    void set_tParam(Parameter value) { _tParam_ = std::move(value); }
    /// URL from which a missing file is fetched.
    [[nodiscard]] const Parameter& _uParam() const { return _uParam_; }
    void set_uParam(Parameter value) { _uParam_ = std::move(value); }

private:
    std::u16string _soundPath_;
    std::shared_ptr<ZNTSoundObject> _nsSound_;
    bool _isSoundFile_ = false;
    std::int32_t _currentLoopCount_ = 0;
    std::u16string _fName_;
    Parameter _vParam_, _lParam_, _pParam_, _cParam_, _tParam_, _uParam_;
};
