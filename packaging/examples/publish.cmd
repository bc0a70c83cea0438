user
password
binary
cd public_html
put picture4.png picture4.new
rename picture4.new picture4.png
put picture1.png picture1.new
rename picture1.new picture1.png
put picture5.png picture5.new
rename picture5.new picture5.png
quit
