// zel-sim: a simulated controller on the local machine.
int main() {
    return 0;
}
