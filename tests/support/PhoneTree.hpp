#pragma once

#include <filesystem>
#include <string_view>

/// A temporary copy of the phone's file tree, removed with the object.
class PhoneTree {
public:
    PhoneTree();
    PhoneTree(const PhoneTree&) = delete;
    PhoneTree& operator=(const PhoneTree&) = delete;
    ~PhoneTree();

    const std::filesystem::path& root() const { return root_; }
    std::filesystem::path preferencesFile() const;
    std::filesystem::path libraryFolder() const;
    std::filesystem::path artLibrary() const;
    std::filesystem::path weatherFramework() const;

    /// Puts another extension's library under that name beside ours, with our filter, and gives its file.
    std::filesystem::path addLibrary(const std::filesystem::path& library, const char* name) const;

    /// Writes the preferences file as another program does.
    void writePreferences(std::string_view contents) const;
    /// The same, as an XML property list with that root element.
    void writePreferencesXML(std::string_view rootElement) const;
    /// The same, as a binary property list; the root is written as a Python expression.
    void writeBinaryPreferences(const std::string& python) const;

    /// The tree that is copied.
    static std::filesystem::path installed();

private:
    std::filesystem::path folder_;
    std::filesystem::path root_;
};

/// A temporary folder of its own, removed with the object.
class TemporaryFolder {
public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

std::string xmlPropertyList(std::string_view rootElement);

void writeFile(const std::filesystem::path& file, std::string_view contents);
std::string readFile(const std::filesystem::path& file);
