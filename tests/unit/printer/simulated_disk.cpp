#include "tests/unit/printer/simulated_disk.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstring>
#include <new>

namespace virtual_printer::test {
namespace {

using Operation = SimulatedDisk::Operation;

// What SQLite allocates for each open file.
struct OpenFile
{
    sqlite3_file base;
    SimulatedDisk* disk;
    std::string* name;
};

OpenFile& own(sqlite3_file* file)
{
    return *reinterpret_cast<OpenFile*>(file);
}

SimulatedDisk& diskOf(sqlite3_vfs* vfs)
{
    return *static_cast<SimulatedDisk*>(vfs->pAppData);
}

void apply(const Operation& operation, SimulatedDisk::Files& files)
{
    std::string& content = files[operation.file];
    switch (operation.kind) {
    case Operation::Kind::write:
        content.resize(std::max(content.size(), operation.offset + operation.data.size()));
        content.replace(operation.offset, operation.data.size(), operation.data);
        break;
    case Operation::Kind::truncate:
        content.resize(operation.offset);
        break;
    case Operation::Kind::remove:
        files.erase(operation.file);
        break;
    case Operation::Kind::synchronize:
        break;
    }
}

int closeFile(sqlite3_file* file)
{
    delete own(file).name;
    return SQLITE_OK;
}

int readFile(sqlite3_file* file, void* target, int count, sqlite3_int64 offset)
{
    const std::string& content = own(file).disk->files[*own(file).name];
    const auto size = static_cast<std::size_t>(count);
    const std::size_t start = std::min(static_cast<std::size_t>(offset), content.size());
    const std::size_t there = std::min(size, content.size() - start);
    std::memset(target, 0, size);
    std::memcpy(target, content.data() + start, there);
    return there == size ? SQLITE_OK : SQLITE_IOERR_SHORT_READ;
}

int writeFile(sqlite3_file* file, const void* data, int count, sqlite3_int64 offset)
{
    return own(file).disk->carryOut(
        {Operation::Kind::write, *own(file).name, static_cast<std::size_t>(offset),
         std::string(static_cast<const char*>(data), static_cast<std::size_t>(count))});
}

int truncateFile(sqlite3_file* file, sqlite3_int64 size)
{
    return own(file).disk->carryOut(
        {Operation::Kind::truncate, *own(file).name, static_cast<std::size_t>(size), {}});
}

int synchronizeFile(sqlite3_file* file, int /*flags*/)
{
    return own(file).disk->carryOut({Operation::Kind::synchronize, *own(file).name, 0, {}});
}

int sizeOfFile(sqlite3_file* file, sqlite3_int64* size)
{
    *size = static_cast<sqlite3_int64>(own(file).disk->files[*own(file).name].size());
    return SQLITE_OK;
}

int lockFile(sqlite3_file* /*file*/, int /*lock*/)
{
    return SQLITE_OK;
}

int isReserved(sqlite3_file* /*file*/, int* isReserved)
{
    *isReserved = 0;
    return SQLITE_OK;
}

int controlFile(sqlite3_file* /*file*/, int /*operation*/, void* /*argument*/)
{
    return SQLITE_NOTFOUND;
}

int sectorSize(sqlite3_file* /*file*/)
{
    return 512;
}

// As SQLite assumes of usual disks: writing beside old bytes does not damage them.
int characteristics(sqlite3_file* /*file*/)
{
    return SQLITE_IOCAP_POWERSAFE_OVERWRITE;
}

const sqlite3_io_methods& fileMethods()
{
    static const sqlite3_io_methods methods = [] {
        sqlite3_io_methods all{};
        all.iVersion = 1; // no memory shared with other processes
        all.xClose = closeFile;
        all.xRead = readFile;
        all.xWrite = writeFile;
        all.xTruncate = truncateFile;
        all.xSync = synchronizeFile;
        all.xFileSize = sizeOfFile;
        all.xLock = lockFile;
        all.xUnlock = lockFile;
        all.xCheckReservedLock = isReserved;
        all.xFileControl = controlFile;
        all.xSectorSize = sectorSize;
        all.xDeviceCharacteristics = characteristics;
        return all;
    }();
    return methods;
}

int openFile(sqlite3_vfs* vfs, const char* name, sqlite3_file* file, int flags, int* flagsGiven)
{
    OpenFile& opened = own(file);
    opened.base.pMethods = &fileMethods();
    opened.disk = &diskOf(vfs);
    opened.name = new std::string(name == nullptr ? "(temporary)" : name);
    opened.disk->files[*opened.name];
    if (flagsGiven != nullptr) {
        *flagsGiven = opened.disk->isReadOnly ? SQLITE_OPEN_READONLY : flags;
    }
    return SQLITE_OK;
}

int removeFile(sqlite3_vfs* vfs, const char* name, int /*isDurable*/)
{
    return diskOf(vfs).carryOut({Operation::Kind::remove, name, 0, {}});
}

int hasFile(sqlite3_vfs* vfs, const char* name, int /*flags*/, int* isThere)
{
    *isThere = diskOf(vfs).files.contains(name) ? 1 : 0;
    return SQLITE_OK;
}

} // namespace

struct SimulatedDisk::Vfs
{
    explicit Vfs(SimulatedDisk& disk) : all(*sqlite3_vfs_find(nullptr))
    {
        all.zName = "simulated disk";
        all.szOsFile = sizeof(OpenFile);
        all.pNext = nullptr;
        all.pAppData = &disk;
        all.xOpen = openFile;
        all.xDelete = removeFile;
        all.xAccess = hasFile;
        sqlite3_vfs_register(&all, 1);
    }
    ~Vfs() { sqlite3_vfs_unregister(&all); }
    Vfs(const Vfs&) = delete;
    Vfs& operator=(const Vfs&) = delete;

    sqlite3_vfs all; // the rest as the system's
};

SimulatedDisk::SimulatedDisk() : vfs(std::make_unique<Vfs>(*this)) {}
SimulatedDisk::~SimulatedDisk() = default;

int SimulatedDisk::carryOut(const Operation& operation)
{
    if (const int failure = failureOf ? failureOf(operation) : SQLITE_OK; failure != SQLITE_OK) {
        return failure;
    }
    apply(operation, files);
    operations.push_back(operation);
    return SQLITE_OK;
}

SimulatedDisk::Files filesAfter(const std::vector<Operation>& operations, std::size_t count)
{
    SimulatedDisk::Files files;
    for (std::size_t i = 0; i < count; ++i) {
        apply(operations[i], files);
    }
    return files;
}

void PowerLoss::pass(const Operation& operation)
{
    switch (operation.kind) {
    case Operation::Kind::write:
    case Operation::Kind::truncate:
        pending.push_back(operation);
        return;
    case Operation::Kind::synchronize:
    case Operation::Kind::remove: // the folder is synchronised with it
        break;
    }
    std::erase_if(pending, [&](const Operation& earlier) {
        if (earlier.file == operation.file) {
            apply(earlier, durable);
            return true;
        }
        return false;
    });
    if (operation.kind == Operation::Kind::remove) {
        apply(operation, durable);
    }
}

SimulatedDisk::Files PowerLoss::someUnsynchronized(std::mt19937& random) const
{
    constexpr std::size_t sector = 512;
    SimulatedDisk::Files files = durable;
    for (const Operation& operation : pending) {
        if (operation.kind != Operation::Kind::write) {
            if (random() % 2 == 0) {
                apply(operation, files);
            }
            continue;
        }
        for (std::size_t start = 0; start < operation.data.size();) {
            const std::size_t end = std::min(
                operation.data.size(), ((operation.offset + start) / sector + 1) * sector - operation.offset);
            if (random() % 2 == 0) {
                apply({Operation::Kind::write, operation.file, operation.offset + start,
                       operation.data.substr(start, end - start)},
                      files);
            }
            start = end;
        }
    }
    return files;
}

} // namespace virtual_printer::test
