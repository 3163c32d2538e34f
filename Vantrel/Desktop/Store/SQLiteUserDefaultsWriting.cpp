#include <algorithm>

#include "Vantrel/Desktop/Store/SQLiteUserDefaults.hpp"

namespace vantrel::desktop {
namespace {

/// A look for the file takes as long as a third of a commit, and is no part of what a jump waits for.
constexpr std::chrono::milliseconds lookDelay{20};
/// A lock that outlasts so many doublings is worth a line.
constexpr int remarkableFactor = 8;

}  // namespace

void SQLiteUserDefaults::storeUnstoredValues(std::chrono::milliseconds lockWait) {
    if (!file_ || !makeWritable(lockWait) || !hasUnstoredValues()) {
        return;
    }
    const int status = writeUnstoredValues();
    if (status != SQLITE_OK) {
        handleFailedWrite(status);
    }
}

bool SQLiteUserDefaults::makeWritable(std::chrono::milliseconds lockWait) {
    // What kept the file from being written may be over.
    if (connection_ && connection_->isReadOnly()) {
        closeStore();
    }
    if (connection_) {
        connection_->setLockWait(lockWait);
    } else {
        retryLater(openStore(lockWait));
    }
    return connection_ && !connection_->isReadOnly();
}

int SQLiteUserDefaults::writeUnstoredValues() {
    const auto isUnstored = [](const auto& known) { return !known.second.isStored; };
    const bool isOne = std::ranges::count_if(knownValues_, isUnstored) == 1;
    int status = isOne ? SQLITE_OK : connection_->begin();
    for (auto known = knownValues_.begin(); known != knownValues_.end() && status == SQLITE_OK; ++known) {
        if (isUnstored(*known)) {
            status = connection_->write(known->first, known->second.value);
        }
    }
    if (status == SQLITE_OK && !isOne) {
        status = connection_->commit();
    }
    if (status != SQLITE_OK) {
        connection_->rollback();
        return status;
    }
    for (auto& [key, known] : knownValues_) {
        known.isInPlace = known.isInPlace && known.isStored;
        known.isStored = true;
    }
    lookForTheFileSoon();
    lastProblem_.clear();
    retryTimer_.reset();
    retryDelay_ = options_.firstRetry;
    if (checkpointer_) {
        checkpointer_->noteCommit(connection_->logPages());
    }
    return SQLITE_OK;
}

void SQLiteUserDefaults::handleFailedWrite(int status) {
    if (meansDamage(status)) {
        startAfresh();
    } else if (meansLocked(status)) {
        retryLater(status);
    } else {
        reportProblem("cannot be written: " + connection_->reasonOf(status));
        // A full disk passes; after any other failure the file is opened anew before the next write.
        if ((status & 0xff) != SQLITE_FULL) {
            closeStore();
        }
    }
}

void SQLiteUserDefaults::retryLater(int status) {
    const bool waitsForLock = meansLocked(status) && hasUnstoredValues();
    // What keeps a file from being read may last for ever, and a change tries anyway.
    const bool waitsToBeRead = !connection_ && !isRead_ && retryDelay_ <= options_.longestRetry;
    if (retryTimer_.isSet() || (!waitsForLock && !waitsToBeRead)) {
        return;
    }
    if (waitsForLock && retryDelay_ >= options_.firstRetry * remarkableFactor) {
        reportProblem(isLocked);
    }
    const std::chrono::milliseconds delay = std::min(retryDelay_, options_.longestRetry);
    retryTimer_ = LoopSource::after(delay, [this] { storeUnstoredValues(std::chrono::milliseconds::zero()); });
    retryDelay_ = delay * 2;
}

void SQLiteUserDefaults::lookForTheFileSoon() {
    if (!lookTimer_.isSet()) {
        lookTimer_ = LoopSource::after(lookDelay, [this] { storeAgainIfTheFileWasMoved(); });
    }
}

void SQLiteUserDefaults::storeAgainIfTheFileWasMoved() {
    lookTimer_.reset();
    const bool wasMoved = connection_ && connection_->wasMoved();
    for (auto& [key, known] : knownValues_) {
        known.isStored = known.isStored && (known.isInPlace || !wasMoved);
        known.isInPlace = true;
    }
    if (wasMoved) {
        closeStore();
        storeUnstoredValues(std::chrono::milliseconds::zero());
    }
}

void SQLiteUserDefaults::checkpointFinished(CheckpointOutcome outcome) {
    endCheckpoint(std::move(outcome));
    if (rested_ && isAtRest()) {
        rested_();
    }
}

void SQLiteUserDefaults::endCheckpoint(CheckpointOutcome outcome) {
    outcome.reader.reset();
    if (!outcome.isComplete || !connection_) {
        return;
    }
    const int pages = connection_->logPages();
    // With commits that never pause there is always one since the checkpoint began. Such a log is begun anew all the
    // same before it fills the disk; only then does this thread wait for it, for the few pages that are left to move.
    if (pages == outcome.pagesInLog || pages >= options_.checkpoints.longestLog) {
        connection_->beginLogAnew();
    }
}

}  // namespace vantrel::desktop
