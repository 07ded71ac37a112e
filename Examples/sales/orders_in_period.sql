-- All orders of a period, first day and last day included.
select o."Order #", c.name as customer, o.order_date
from sales_order o
join customer c on c.customer_id = o.customer_id
where o.order_date between #"'" + $from + "'"# and #"'" + $to + "'"#
order by o.order_date;
