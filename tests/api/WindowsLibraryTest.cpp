// The library as Windows sees it: a DLL with a version, which hears nothing of threads.
#ifdef _WIN32

#include <cstdio>
#include <string>
#include <vector>

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include "api/Host.h"

namespace {

class WindowsLibraryTest : public HostTest {
protected:
    static HMODULE Module() { return GetModuleHandleW(L"OviCore.dll"); }

    /// The version resource of the file, as installers read it.
    static std::vector<char> VersionResource() {
        wchar_t path[MAX_PATH];
        GetModuleFileNameW(Module(), path, MAX_PATH);
        DWORD ignored = 0;
        std::vector<char> resource(GetFileVersionInfoSizeW(path, &ignored));
        const auto size = static_cast<DWORD>(resource.size());
        if (!GetFileVersionInfoW(path, 0, size, resource.data()))
            resource.clear();
        return resource;
    }

    static std::string TextOf(const std::vector<char>& resource, const std::string& name) {
        const std::string path = "\\StringFileInfo\\040904B0\\" + name;
        void* text = nullptr;
        UINT size = 0;
        if (resource.empty() || !VerQueryValueA(resource.data(), path.c_str(), &text, &size))
            return "none";
        return static_cast<const char*>(text);
    }
};

TEST_F(WindowsLibraryTest, HasItsVersionInAResource) {
    const auto resource = VersionResource();
    ASSERT_FALSE(resource.empty());
    void* data = nullptr;
    UINT size = 0;
    ASSERT_TRUE(VerQueryValueW(resource.data(), L"\\", &data, &size));
    const auto* numbers = static_cast<const VS_FIXEDFILEINFO*>(data);
    char version[40];
    std::snprintf(version, sizeof version, "%u.%u.%u", HIWORD(numbers->dwFileVersionMS),
                  LOWORD(numbers->dwFileVersionMS), HIWORD(numbers->dwFileVersionLS));
    EXPECT_STREQ(version, Ovi_GetVersion());
    EXPECT_EQ(numbers->dwFileVersionMS, numbers->dwProductVersionMS);
    EXPECT_EQ(numbers->dwFileVersionLS, numbers->dwProductVersionLS);
    EXPECT_EQ(TextOf(resource, "FileVersion"), Ovi_GetVersion());
    EXPECT_EQ(TextOf(resource, "ProductVersion"), Ovi_GetVersion());
    EXPECT_EQ(TextOf(resource, "ProductName"), "OviCore");
    EXPECT_EQ(TextOf(resource, "OriginalFilename"), "OviCore.dll");
}

// The system refuses this for a DLL with thread storage, and would go on calling its entry point.
TEST_F(WindowsLibraryTest, MayBeSparedTheCallsForThreads) {
    ASSERT_NE(Module(), nullptr);
    EXPECT_TRUE(DisableThreadLibraryCalls(Module()));
}

TEST_F(WindowsLibraryTest, WorksInThreadsThatComeAndGo) {
    const auto addAsset = [](void*) -> DWORD { return OviAssetManager_NewAsset(nullptr) ? 1 : 0; };
    constexpr int kThreads = 500;
    for (int i = 0; i < kThreads; ++i) {
        const HANDLE thread = CreateThread(nullptr, 0, addAsset, nullptr, 0, nullptr);
        ASSERT_NE(thread, nullptr);
        WaitForSingleObject(thread, INFINITE);
        DWORD result = 0;
        EXPECT_TRUE(GetExitCodeThread(thread, &result));
        EXPECT_EQ(result, 1u);
        CloseHandle(thread);
    }
    EXPECT_EQ(OviAssetManager_GetAssetCount(), kThreads);
}

} // namespace

#endif
