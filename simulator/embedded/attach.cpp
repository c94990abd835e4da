namespace {[[maybe_unused]] int placeholder;}
