#include <gmock/gmock.h>
#include <stdlib.h>

int main(int argc, char** argv) {
    setenv("TZ", "UTC", 1);
    setenv("LANG", "C.UTF-8", 1);
    setenv("LC_ALL", "C.UTF-8", 1);
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
