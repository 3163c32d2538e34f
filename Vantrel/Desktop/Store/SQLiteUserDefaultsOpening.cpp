#include <cstdio>
#include <utility>

#include "Vantrel/Desktop/Store/SQLiteUserDefaults.hpp"

namespace vantrel::desktop {
int SQLiteUserDefaults::openStore(std::chrono::milliseconds lockWait) {
    realFile_ = *file_;
    if (const StoreFileProblem problem = prepareStoreFile(realFile_); !problem.empty()) {
        reportProblem("cannot be opened: " + problem);
        return SQLITE_CANTOPEN;
    }
    if (hasOrphanedLog(realFile_) && !setDamagedStoreAside("was empty beside a log")) {
        return SQLITE_CORRUPT;
    }
    if (isCutOff(realFile_) && !setDamagedStoreAside("was cut off")) {
        return SQLITE_CORRUPT;
    }
    const bool hadLog = hasLogContent(realFile_);
    StoreConnection::Opened opened = StoreConnection::open(realFile_, options_.vfs, lockWait);
    if (meansDamage(opened.status)) {
        if (!setDamagedStoreAside("was damaged")) {
            return SQLITE_CORRUPT;
        }
        opened = StoreConnection::open(realFile_, options_.vfs, lockWait);
    }
    connection_ = std::move(opened.connection);
    if (!connection_) {
        reportProblem(meansLocked(opened.status) ? isLocked : "cannot be opened: " + opened.reason);
        return opened.status;
    }
    if (connection_->isReadOnly()) {
        reportProblem("can only be read" + (opened.reason.empty() ? "" : ": " + opened.reason));
    } else if (connection_->hasLog()) {
        checkpointer_ = std::make_unique<StoreCheckpointer>(
            realFile_, options_.vfs, options_.checkpoints,
            [this](CheckpointOutcome outcome) { checkpointFinished(std::move(outcome)); });
        if (!hadLog && connection_->logPages() == 0) {
            connection_->beginLogAnew();
        }
    }
    takeIn(opened.values);
    return SQLITE_OK;
}

void SQLiteUserDefaults::takeIn(const Values& stored) {
    if (isRead_ || stored.empty()) {
        return;
    }
    if (!knownValues_.empty() && !lateReadHandler_) {
        // Only the handler can bring together what was set and what is stored.
        closeStore();
        return;
    }
    isRead_ = true;
    retryTimer_.reset();
    retryDelay_ = options_.firstRetry;
    // What is known so far was set by this run, perhaps in a file that stood in for this one.
    for (auto& known : knownValues_) {
        known.second.isStored = false;
    }
    for (const auto& [key, value] : stored) {
        knownValues_.try_emplace(key, KnownValue{value, true});
    }
    if (lateReadHandler_) {
        isTakingIn_ = true;
        lateReadHandler_(stored);
        isTakingIn_ = false;
    }
}

void SQLiteUserDefaults::closeStore() {
    checkpointer_.reset();
    connection_.reset();
}

bool SQLiteUserDefaults::setDamagedStoreAside(const char* finding) {
    const std::optional<std::filesystem::path> aside = setStoreAside(realFile_);
    if (!aside) {
        reportProblem(std::string(finding) + " and cannot be set aside");
        return false;
    }
    std::fprintf(stderr, "vantrel: the settings in %s %s; they are kept as %s\n", realFile_.c_str(), finding,
                 aside->c_str());
    for (auto& known : knownValues_) {
        known.second.isStored = false;
    }
    if (const StoreFileProblem problem = prepareStoreFile(realFile_); !problem.empty()) {
        reportProblem("cannot be made anew: " + problem);
        return false;
    }
    return true;
}

void SQLiteUserDefaults::startAfresh() {
    closeStore();
    if (!setDamagedStoreAside("was damaged")) {
        return;
    }
    openStore(std::chrono::milliseconds::zero());
    if (connection_ && !connection_->isReadOnly() && hasUnstoredValues()) {
        const int status = writeUnstoredValues();
        if (status != SQLITE_OK) {
            reportProblem("cannot be written: " + connection_->reasonOf(status));
        }
    }
}

void SQLiteUserDefaults::reportProblem(const std::string& problem) {
    // Told once, not at each write that fails for the same reason.
    if (problem == lastProblem_) {
        return;
    }
    lastProblem_ = problem;
    std::fprintf(stderr, "vantrel: the settings file %s %s; changes are kept until they can be stored\n",
                 file_->c_str(), problem.c_str());
}

}  // namespace vantrel::desktop
