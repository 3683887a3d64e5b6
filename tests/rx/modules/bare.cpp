// A shared object that is no module.
int answer() { return 42; }
