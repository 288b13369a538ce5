// finds: undefined symbol: _gets
extern "C" char* gets(char*);

int main() {
    return gets(nullptr) == nullptr ? 1 : 0;
}
