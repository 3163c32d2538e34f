#include "Vantrel/Desktop/Store/SQLiteUserDefaults.hpp"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "Vantrel/Desktop/Store/StoreFiles.hpp"
#include "Vantrel/Desktop/Store/StoreOpening.hpp"

namespace vantrel::desktop {

namespace {

using Milliseconds = std::chrono::milliseconds;

/// A look for the file takes as long as a third of a commit, and is no part of what a jump waits for.
constexpr Milliseconds lookDelay{20};
/// A lock that outlasts so many doublings is worth a line.
constexpr int remarkableFactor = 8;
constexpr const char* isLocked = "is locked by another program";

}  // namespace

SQLiteUserDefaults::SQLiteUserDefaults(std::optional<std::filesystem::path> file, StoreOptions options)
    : file_(std::move(file)), options_(options), retryDelay_(options.firstRetry) {
    if (file_) {
        retryLater(open(options_.patience));
    }
}

SQLiteUserDefaults::~SQLiteUserDefaults() {
    checkpointer_.reset();
    finish();
    checkpointer_.reset();
    if (connection_) {
        connection_->moveLogWhenClosing();
    }
}

void SQLiteUserDefaults::finish() {
    if (lookTimer_.isSet()) {
        lookForFile();
    }
    if (hasUnstoredValues()) {
        store(options_.patience);
    }
}

void SQLiteUserDefaults::setObjects(std::initializer_list<Entry> entries) {
    for (const auto& [key, value] : entries) {
        values_.set(key, value);
    }
    if (!isTakingIn_) {
        store(Milliseconds::zero());
    }
}

int SQLiteUserDefaults::open(Milliseconds lockWait) {
    realFile_ = *file_;
    if (const std::string problem = prepareStoreFile(realFile_); !problem.empty()) {
        reportProblem("cannot be opened: " + problem);
        return SQLITE_CANTOPEN;
    }
    if (const char* const damage = visibleDamage(realFile_); damage != nullptr && !setAside(damage)) {
        return SQLITE_CORRUPT;
    }
    const bool hadLog = hasLogContent(realFile_);
    OpenedStore opened = openStore(realFile_, options_.vfs, lockWait);
    if (meansDamage(opened.status)) {
        if (!setAside("was damaged")) {
            return SQLITE_CORRUPT;
        }
        opened = openStore(realFile_, options_.vfs, lockWait);
    }
    connection_ = std::move(opened.connection);
    if (!connection_) {
        reportProblem(meansLocked(opened.status) ? isLocked : "cannot be opened: " + opened.reason);
        return opened.status;
    }
    if (connection_->isReadOnly()) {
        reportProblem("can only be read" + (opened.reason.empty() ? "" : ": " + opened.reason));
    } else if (connection_->hasLog()) {
        checkpointer_ =
            std::make_unique<StoreCheckpointer>(*connection_, realFile_, options_.vfs, options_.checkpoints, [this] {
                if (rested_ && isAtRest()) {
                    rested_();
                }
            });
        if (!hadLog && connection_->logPages() == 0) {
            connection_->beginLogAnew();
        }
    }
    takeIn(opened.values);
    return SQLITE_OK;
}

void SQLiteUserDefaults::close() {
    checkpointer_.reset();
    connection_.reset();
}

bool SQLiteUserDefaults::setAside(const char* damage) {
    const std::optional<std::filesystem::path> aside = setStoreAside(realFile_);
    if (!aside) {
        reportProblem(std::string(damage) + " and cannot be set aside");
        return false;
    }
    std::fprintf(stderr, "vantrel: the settings in %s %s; they are kept as %s\n", realFile_.c_str(), damage,
                 aside->c_str());
    values_.noteFileLost();
    const std::string problem = prepareStoreFile(realFile_);
    if (!problem.empty()) {
        reportProblem("cannot be made anew: " + problem);
    }
    return problem.empty();
}

void SQLiteUserDefaults::takeIn(const Values& stored) {
    if (isRead_ || stored.empty()) {
        return;
    }
    if (!values_.isEmpty() && !lateReadHandler_) {
        // Only the handler can bring together what was set and what is stored.
        close();
        return;
    }
    isRead_ = true;
    retryTimer_.reset();
    retryDelay_ = options_.firstRetry;
    // What is known so far was set by this run, perhaps in a file that stood in for this one.
    values_.addStored(stored);
    if (lateReadHandler_) {
        isTakingIn_ = true;
        lateReadHandler_(stored);
        isTakingIn_ = false;
    }
}

void SQLiteUserDefaults::store(Milliseconds lockWait) {
    if (!file_ || !makeWritable(lockWait)) {
        return;
    }
    int status = writeUnstoredValues();
    if (meansDamage(status)) {
        close();
        if (!setAside("was damaged") || !makeWritable(Milliseconds::zero())) {
            return;
        }
        status = writeUnstoredValues();
    }
    if (meansLocked(status)) {
        retryLater(status);
    } else if (status != SQLITE_OK) {
        reportProblem("cannot be written: " + connection_->reasonOf(status));
        // A full disk passes; after any other failure the file is opened anew before the next write.
        if ((status & 0xff) != SQLITE_FULL) {
            close();
        }
    }
}

bool SQLiteUserDefaults::makeWritable(Milliseconds lockWait) {
    // What kept the file from being written may be over.
    if (connection_ && connection_->isReadOnly()) {
        close();
    }
    if (connection_) {
        connection_->setLockWait(lockWait);
    } else {
        retryLater(open(lockWait));
    }
    return connection_ && !connection_->isReadOnly();
}

int SQLiteUserDefaults::writeUnstoredValues() {
    const auto entries = values_.unstored();
    const int status = entries.empty() ? SQLITE_OK : connection_->store(entries);
    if (status == SQLITE_OK && !entries.empty()) {
        values_.noteStored();
        lastProblem_.clear();
        retryTimer_.reset();
        retryDelay_ = options_.firstRetry;
        if (!lookTimer_.isSet()) {
            lookTimer_ = LoopSource::after(lookDelay, [this] { lookForFile(); });
        }
        if (checkpointer_) {
            checkpointer_->noteCommit();
        }
    }
    return status;
}

void SQLiteUserDefaults::retryLater(int status) {
    const bool waitsForLock = meansLocked(status) && values_.hasUnstored();
    // What keeps a file from being read may last for ever, and a change tries anyway.
    const bool waitsToBeRead = !connection_ && !isRead_ && retryDelay_ <= options_.longestRetry;
    if (retryTimer_.isSet() || (!waitsForLock && !waitsToBeRead)) {
        return;
    }
    if (waitsForLock && retryDelay_ >= options_.firstRetry * remarkableFactor) {
        reportProblem(isLocked);
    }
    const Milliseconds delay = std::min(retryDelay_, options_.longestRetry);
    retryTimer_ = LoopSource::after(delay, [this] { store(Milliseconds::zero()); });
    retryDelay_ = delay * 2;
}

void SQLiteUserDefaults::lookForFile() {
    lookTimer_.reset();
    const bool wasMoved = connection_ && connection_->wasMoved();
    values_.noteLook(!wasMoved);
    if (wasMoved) {
        close();
        store(Milliseconds::zero());
    }
}

void SQLiteUserDefaults::reportProblem(const std::string& problem) {
    // Told once, not at each write that fails for the same reason.
    if (std::exchange(lastProblem_, problem) != problem) {
        std::fprintf(stderr, "vantrel: the settings file %s %s; changes are kept until they can be stored\n",
                     file_->c_str(), problem.c_str());
    }
}

}  // namespace vantrel::desktop
