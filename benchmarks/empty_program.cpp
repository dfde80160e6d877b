// What starting and waiting for a program costs at the least.
int main() {
    return 0;
}
