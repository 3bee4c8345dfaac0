/// A library with one of the functions only.
extern "C" int nvmlInit_v2();
extern "C" int nvmlInit_v2() {
    return 0;
}
