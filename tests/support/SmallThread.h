#pragma once

#include <functional>

#ifdef _WIN32
#ifndef NOMINMAX
#define NOMINMAX
#endif
#define WIN32_LEAN_AND_MEAN
#include <windows.h>
#else
#include <pthread.h>
#endif

/// Runs a body to its end in a thread whose stack has 1 MiB, as hosts may have for theirs.
inline void RunOnSmallStack(std::function<void()> body) {
    constexpr size_t kStack = 1 << 20;
#ifdef _WIN32
    const auto run = [](void* argument) -> DWORD {
        (*static_cast<std::function<void()>*>(argument))();
        return 0;
    };
    const HANDLE thread =
        CreateThread(nullptr, kStack, run, &body, STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);
#else
    const auto run = [](void* argument) -> void* {
        (*static_cast<std::function<void()>*>(argument))();
        return nullptr;
    };
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, kStack);
    pthread_t thread;
    pthread_create(&thread, &attributes, run, &body);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
#endif
}
