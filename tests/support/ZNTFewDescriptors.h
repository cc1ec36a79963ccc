#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>
#include <vector>

/// The undefined-behaviour sanitizer opens a pipe to look at an object that it checks, and reports the object
/// if it cannot. So tests that take the descriptors away skip where it runs, which is together with the
/// address sanitizer. The release build runs them.
#ifdef __SANITIZE_ADDRESS__
inline constexpr bool sanitizerNeedsDescriptors = true;
#else
inline constexpr bool sanitizerNeedsDescriptors = false;
#endif

/// While it lives, this process may open `spare` further descriptors.
class ZNTFewDescriptors
{
public:
    explicit ZNTFewDescriptors(int spare)
    {
        std::vector<int> opened; // the lowest that are free; the limit is the number of the last one
        for (int count = 0; count <= spare; ++count)
            opened.push_back(::open("/dev/null", O_RDONLY | O_CLOEXEC));
        EXPECT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
        auto few = before;
        few.rlim_cur = static_cast<rlim_t>(opened.back());
        EXPECT_EQ(::setrlimit(RLIMIT_NOFILE, &few), 0);
        for (const int each : opened)
            ::close(each);
    }
    ~ZNTFewDescriptors() { EXPECT_EQ(::setrlimit(RLIMIT_NOFILE, &before), 0); }
    ZNTFewDescriptors(const ZNTFewDescriptors&) = delete;
    ZNTFewDescriptors& operator=(const ZNTFewDescriptors&) = delete;

private:
    rlimit before{};
};
