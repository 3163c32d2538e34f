#include <cstdio>
#include <utility>

#include "Vantrel/Desktop/Store/SQLiteUserDefaults.hpp"

namespace vantrel::desktop {

void SQLiteUserDefaults::openStore(std::chrono::milliseconds lockWait) {
    realFile_ = *file_;
    if (const StoreFileProblem problem = prepareStoreFile(realFile_); !problem.empty()) {
        reportProblem("cannot be opened: " + problem);
        return;
    }
    if (hasOrphanedLog(realFile_) && !setDamagedStoreAside("was empty beside a log")) {
        return;
    }
    if (isCutOff(realFile_) && !setDamagedStoreAside("was cut off")) {
        return;
    }
    const bool hadLog = hasLogContent(realFile_);
    StoreConnection::Opened opened = StoreConnection::open(realFile_, options_.vfs, lockWait);
    if (meansDamage(opened.status)) {
        if (!setDamagedStoreAside("was damaged")) {
            return;
        }
        opened = StoreConnection::open(realFile_, options_.vfs, lockWait);
    }
    connection_ = std::move(opened.connection);
    if (!connection_) {
        reportProblem("cannot be opened: " + opened.reason);
        if (meansLocked(opened.status)) {
            retryLater();
        }
    } else if (connection_->isReadOnly()) {
        reportProblem("can only be read" + (opened.reason.empty() ? "" : ": " + opened.reason));
    } else if (connection_->hasLog()) {
        checkpointer_ = std::make_unique<StoreCheckpointer>(
            realFile_, options_.vfs, options_.checkpoints,
            [this](CheckpointOutcome outcome) { checkpointFinished(std::move(outcome)); });
        if (!hadLog && connection_->logPages() == 0) {
            connection_->beginLogAnew();
        }
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
