#pragma once

/// A disk without room: as long as this lives, whatever this process writes into a regular file fails for that reason. What it
/// writes elsewhere, to a socket or a terminal, goes its way.
class FullDisk {
public:
    FullDisk();
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;
    ~FullDisk();
};
