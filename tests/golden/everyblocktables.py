"""The blocks' names, the values that the program of all blocks gives them, and the dots of signs."""

# Types of blocks, as they stand in files.
MAIN = 0
SPEED, WAIT, BACKWARD, FORWARD, FORWARD_TIME, STOP, TURN_LEFT = 100, 101, 102, 103, 104, 105, 106
SERVO, TURN_RIGHT, MOTOR_ANTICLOCKWISE, MOTOR_CLOCKWISE = 107, 109, 110, 111
MOTOR_ANTICLOCKWISE_TIME, MOTOR_CLOCKWISE_TIME, MOTOR_STOP = 112, 113, 117
BACKWARD_TIME, TURN_LEFT_TIME, TURN_RIGHT_TIME = 118, 119, 120
COUNTED, ENDLESS, UNTIL_INFRARED, UNTIL_TOUCH = 301, 303, 306, 307
WAIT_INFRARED, WAIT_TOUCH = 308, 309
PIANO, ANIMAL, MOOD, HELLO, TRAFFIC = 800, 801, 802, 803, 804
SIGN, CLOSE_ONE, DIGIT, FACE, CLOSE_BOTH, ARITHMETIC, LETTER = 900, 901, 902, 903, 904, 905, 906

DRIVES = FORWARD, BACKWARD, TURN_LEFT, TURN_RIGHT
TIMED_DRIVES = FORWARD_TIME, BACKWARD_TIME, TURN_LEFT_TIME, TURN_RIGHT_TIME

# Seconds as they stand in a file.
TIMES = "1", "0", "0.01", "0.5", "2.5", "12.25", "0.001", "-1", "", "five", "1e-2"
# The longest that can be typed, without and with a point.
LONGEST, LONGEST_WITH_POINT = "999999", "999999.99"

# Degrees; the last ones only a file can hold.
ANGLES = (0, 1, -1, 2, -2, 7, -7, 25, -25, 45, -45, 90, -90, 100, -100, 149, -149, 150, -150,
          151, -151, 300, -300)

# Sounds by choice, counted from 1; the last ones of each line only a file can hold.
SOUNDS = {PIANO: (*range(1, 8), 0, 8), ANIMAL: (*range(1, 7), 0, 7), MOOD: (*range(1, 5), 0, 5),
          HELLO: (*range(1, 6), 0, 6, -1), TRAFFIC: (1, 2, 0, 3)}

# Signs by place in their panel, counted from 0; the last ones of each line only a file can hold.
SIGNS = {SIGN: (*range(13), 13, -1), ARITHMETIC: (*range(5), 5, -1), DIGIT: (*range(10), 10, -1),
         LETTER: (*range(26), 26, 34, -1)}

# The dots of each sign by its number, eight rows from the top, the leftmost dot in the highest bit.
DOTS = """
0 ? 3C 7E 66 66 C 18 0 18
1 ! 0 10 10 10 10 0 10 0
2 $ 10 3C 50 38 14 78 10 0
3 ￥ 44 28 7C 10 7C 10 10 0
4 = 0 0 7E 0 7E 0 0 0
5 + 0 10 10 7C 10 10 0 0
6 - 0 0 0 7C 0 0 0 0
7 X 0 44 28 10 28 44 0 0
8 ÷ 0 10 0 7C 0 10 0 0
9 0 38 44 4C 54 64 44 38 0
10 1 10 30 10 10 10 10 38 0
11 2 38 44 4 8 10 20 7C 0
12 3 38 44 4 18 4 44 38 0
13 4 8 18 28 48 7C 8 8 0
14 5 7C 40 78 4 4 44 38 0
15 6 38 44 40 78 44 44 38 0
16 7 7C 4 8 10 10 10 10 0
17 8 38 44 44 38 44 44 38 0
18 9 38 44 44 3C 4 44 38 0
19 A 10 28 44 44 7C 44 44 0
20 B 78 44 44 78 44 44 78 0
21 C 38 44 40 40 40 44 38 0
22 D 78 44 44 44 44 44 78 0
23 E 7C 40 40 78 40 40 7C 0
24 F 7C 40 40 78 40 40 40 0
25 G 38 44 40 40 4C 44 38 0
26 H 44 44 44 7C 44 44 44 0
27 I 38 10 10 10 10 10 38 0
28 J 3C 4 4 4 4 44 38 0
29 K 44 48 50 60 50 48 44 0
30 L 40 40 40 40 40 40 7C 0
31 M 44 6C 54 54 44 44 44 0
32 N 44 44 64 54 4C 44 44 0
33 O 38 44 44 44 44 44 38 0
34 P 78 44 44 78 40 40 40 0
35 Q 38 44 44 44 44 38 4 0
36 R 78 44 44 78 50 48 44 0
37 S 38 44 40 38 4 44 38 0
38 T 7C 10 10 10 10 10 10 0
39 U 44 44 44 44 44 44 38 0
40 V 44 44 44 44 44 28 10 0
41 W 44 44 44 44 54 54 28 0
42 X 44 44 28 10 28 44 44 0
43 Y 44 44 44 3C 4 44 38 0
44 Z 7C 4 8 10 20 40 7C 0
45 大心 0 6C 92 82 44 28 10 0
46 小心 0 0 28 54 44 28 10 0
47 前进 10 38 54 10 10 10 10 0
48 后退 10 10 10 10 54 38 10 0
49 左转 10 20 7E 22 12 2 2 0
50 右转 8 4 7E 44 48 40 40 0
51 GO 0 62 95 85 B5 95 62 0
52 stop 3C 42 81 FF FF 81 42 3C
"""
SYMBOLS = {int(line.split()[0]): [int(row, 16) for row in line.split()[2:]]
           for line in DOTS.strip().splitlines()}
