#include "vantrel.h"
void user_main()
{
      int speed1 = 50,speed2 = 50,speed3 = 50, speed4 = 50;
      for(int i = 0;i < 2; ++i)
      {
            set_motor(1, speed1);set_motor(2, -speed2);for(int i = 0;i < 3; ++i)
            {
                  wait(0.1);
            }set_motor(1,0);set_motor(2,0);set_motor(3,0);set_motor(4,0);}for(int i = 0;i < 0; ++i)
            {
            }set_motor(1, speed1);set_motor(2, speed2);
      }
