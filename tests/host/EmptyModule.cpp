// A shared object that loads fine but is no component module: it lacks both entry points.
extern "C" int lmHostTestNotAnEntryPoint() {
    return 0;
}
