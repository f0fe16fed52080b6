#pragma once
// Auto-save and recovery: the project is written now and then to a file in
// the user's application data folder that a normal exit deletes, so a file
// found at the next start means that the earlier run ended badly.

#include "CVxStringW.h"

#include <cstdint>
#include <functional>

class CVxAppCore;

class CVxAutoSave
{
public:
    // The host's timer that calls OnAutoSaveTimer.
    static constexpr int timerPeriodMs = 20000;

    // Opens a recovered file; atStart as for opening at start-up.
    using Opener = std::function<bool(const CVxStringW& path, bool atStart)>;

    explicit CVxAutoSave(CVxAppCore* core) : m_core(core) {}

    // lastSaveTick is the host's tick of the last save of any kind; it is
    // moved on when this writes the auto-save file.
    void OnAutoSaveTimer(int64_t& lastSaveTick);
    // Writes the project beside the auto-save file and then over it,
    // leaving the project's modified flag as it was.
    bool SaveProjectToAutoSaveFile(int64_t& lastSaveTick);

    // Finds a file of a crashed run, asks whether to load it and loads it.
    // True when a project was recovered.
    bool CheckForAutoSave(bool atStart, const Opener& open = nullptr);
    // The question and the loading of CheckForAutoSave for a file already
    // found.
    bool AskAndRecover(const CVxStringW& file, bool atStart, const Opener& open = nullptr);

    // The picture of the project that an auto-save writes beside its file.
    static CVxStringW GetThumbnailFile(const CVxStringW& autoSaveFile);
    // This run's auto-save file and its picture, after a normal exit or a
    // save under the project's own name.
    static void DeleteAutoSaveFile();

private:
    bool LoadRecoveredProject(const CVxStringW& file);
    void SaveThumbnail(const CVxStringW& file);

    CVxAppCore* m_core;
};

CVxAutoSave* VX_GetAutoSave();
